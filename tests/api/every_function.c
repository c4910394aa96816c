/* Takes each function of the interface by the type it must have, as C and as C++, and calls what can be
 * called without a machine to look at. */
#include <zuk.h>

#include <stddef.h>

#include <zuk.h> /* once more: it must not mind */

static int takeLibrary(void) {
    int (*init)(const char*, ZUK_log_callback, void*, const wchar_t*, const wchar_t*, ZUKCtx**) = ZUK_init;
    int (*release)(ZUKCtx*) = ZUK_free;
    return init(NULL, NULL, NULL, NULL, NULL, NULL) == 2 && release(NULL) == 3;
}

static int takeHardware(void) {
    int (*init)(ZUKCtx*, ZUK_log_callback, void*, ZUKHwCtx**) = ZUK_hw_init;
    int (*setopt)(ZUKHwCtx*, int, unsigned char) = ZUK_hw_setopt;
    int (*groupName)(ZUKHwCtx*, int, const wchar_t**) = ZUK_hw_get_group_name;
    int (*returncode)(ZUKHwCtx*, int*) = ZUK_hw_get_returncode;
    int (*run)(ZUKHwCtx*) = ZUK_hw_run;
    int (*instances)(ZUKHwCtx*, int, int*) = ZUK_hw_get_group_instances;
    int (*fields)(ZUKHwCtx*, int, int, const wchar_t***, int*) = ZUK_hw_get_fields;
    int (*value)(ZUKHwCtx*, int, int, const wchar_t*, const wchar_t**) = ZUK_hw_get_value;
    int (*release)(ZUKHwCtx*) = ZUK_hw_free;
    return init(NULL, NULL, NULL, NULL) == 3 && setopt(NULL, 1, 1) == 3 && groupName(NULL, 1, NULL) == 3 &&
           returncode(NULL, NULL) == 3 && run(NULL) == 3 && instances(NULL, 1, NULL) == 3 &&
           fields(NULL, 1, 0, NULL, NULL) == 3 && value(NULL, 1, 0, NULL, NULL) == 3 && release(NULL) == 3;
}

static int takeSoftware(void) {
    int (*init)(ZUKCtx*, ZUK_log_callback, void*, ZUKSwCtx**) = ZUK_sw_init;
    int (*config)(ZUKSwCtx*, const wchar_t*, const wchar_t*, const wchar_t*) = ZUK_sw_setopt_config;
    int (*variable)(ZUKSwCtx*, const wchar_t*, const wchar_t*, const wchar_t*) = ZUK_sw_setopt_variable;
    int (*evaluate)(ZUKSwCtx*, const wchar_t*) = ZUK_sw_evaluate;
    int (*multi)(ZUKSwCtx*, const wchar_t**, unsigned) = ZUK_sw_evaluate_multi;
    int (*file)(ZUKSwCtx*, const wchar_t*) = ZUK_sw_evaluate_file;
    int (*release)(ZUKSwCtx*) = ZUK_sw_free;
    return init != NULL && config(NULL, NULL, NULL, NULL) == 3 && variable(NULL, NULL, NULL, NULL) == 3 &&
           evaluate(NULL, NULL) == 3 && multi(NULL, NULL, 0) == 3 && file(NULL, NULL) == 3 &&
           release(NULL) == 3;
}

static int takeSoftwareResults(void) {
    int (*returncode)(ZUKSwCtx*, int*) = ZUK_sw_get_returncode;
    int (*results)(ZUKSwCtx*, ZUKSwResult***, unsigned*) = ZUK_sw_get_results;
    int (*warnings)(ZUKSwCtx*, const wchar_t***, unsigned*) = ZUK_sw_get_warnings;
    int (*variables)(ZUKSwCtx*, const ZUKSwResult*, const wchar_t***, unsigned*) = ZUK_sw_get_variables;
    int (*value)(ZUKSwCtx*, const ZUKSwResult*, const wchar_t*, const wchar_t**) = ZUK_sw_get_value;
    int (*metadata)(ZUKSwCtx*, const ZUKSwResult*, const wchar_t**) = ZUK_sw_get_metadata;
    int (*guid)(ZUKSwCtx*, const ZUKSwResult*, const wchar_t**) = ZUK_sw_get_guid;
    int (*find)(ZUKSwCtx*, const wchar_t*, ZUKSwResult**) = ZUK_sw_find_result_by_guid;
    int (*findAll)(ZUKSwCtx*, const wchar_t*, ZUKSwResult***, unsigned*) = ZUK_sw_find_results_by_guid;
    return returncode(NULL, NULL) == 3 && results(NULL, NULL, NULL) == 3 && warnings(NULL, NULL, NULL) == 3 &&
           variables(NULL, NULL, NULL, NULL) == 3 && value(NULL, NULL, NULL, NULL) == 3 &&
           metadata(NULL, NULL, NULL) == 3 && guid(NULL, NULL, NULL) == 3 && find(NULL, NULL, NULL) == 3 &&
           findAll(NULL, NULL, NULL, NULL) == 3;
}

int main(void) {
    return takeLibrary() && takeHardware() && takeSoftware() && takeSoftwareResults() ? 0 : 1;
}
