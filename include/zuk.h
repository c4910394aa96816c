#ifndef ZUK_H
#define ZUK_H

#include <wchar.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ZUKCtx ZUKCtx;  typedef struct ZUKHwCtx ZUKHwCtx;
typedef struct ZUKSwCtx ZUKSwCtx;  typedef struct ZUKSwResult ZUKSwResult;
typedef void (*ZUK_log_callback)(int message_level, int logger_level, void* user_data,
                                 const char* location, const char* text);
int ZUK_init(const char* exploiter, ZUK_log_callback, void* user_data,
             const wchar_t* temp_base, const wchar_t* home_dir, ZUKCtx** out);
int ZUK_free(ZUKCtx*);
int ZUK_hw_init(ZUKCtx*, ZUK_log_callback, void* user_data, ZUKHwCtx** out);
int ZUK_hw_setopt(ZUKHwCtx*, int group, unsigned char value);
int ZUK_hw_get_group_name(ZUKHwCtx*, int group, const wchar_t** name);
int ZUK_hw_get_returncode(ZUKHwCtx*, int* code);
int ZUK_hw_run(ZUKHwCtx*);
int ZUK_hw_get_group_instances(ZUKHwCtx*, int group, int* count);
int ZUK_hw_get_fields(ZUKHwCtx*, int group, int instance, const wchar_t*** names, int* count);
int ZUK_hw_get_value(ZUKHwCtx*, int group, int instance, const wchar_t* field, const wchar_t** value);
int ZUK_hw_free(ZUKHwCtx*);
int ZUK_sw_init(ZUKCtx*, ZUK_log_callback, void* user_data, ZUKSwCtx** out);
int ZUK_sw_setopt_config(ZUKSwCtx*, const wchar_t* plugin, const wchar_t* attribute, const wchar_t* value);
int ZUK_sw_setopt_variable(ZUKSwCtx*, const wchar_t* name, const wchar_t* value, const wchar_t* scope);
int ZUK_sw_evaluate(ZUKSwCtx*, const wchar_t* signature);
int ZUK_sw_evaluate_multi(ZUKSwCtx*, const wchar_t** signatures, unsigned count);
int ZUK_sw_evaluate_file(ZUKSwCtx*, const wchar_t* path);
int ZUK_sw_get_returncode(ZUKSwCtx*, int* rc);
int ZUK_sw_get_results(ZUKSwCtx*, ZUKSwResult*** results, unsigned* count);
int ZUK_sw_get_warnings(ZUKSwCtx*, const wchar_t*** warnings, unsigned* count);
int ZUK_sw_get_variables(ZUKSwCtx*, const ZUKSwResult*, const wchar_t*** names, unsigned* count);
int ZUK_sw_get_value(ZUKSwCtx*, const ZUKSwResult*, const wchar_t* name, const wchar_t** value);
int ZUK_sw_get_metadata(ZUKSwCtx*, const ZUKSwResult*, const wchar_t** metadata);
int ZUK_sw_get_guid(ZUKSwCtx*, const ZUKSwResult*, const wchar_t** guid);
int ZUK_sw_find_result_by_guid(ZUKSwCtx*, const wchar_t* guid, ZUKSwResult** result);
int ZUK_sw_find_results_by_guid(ZUKSwCtx*, const wchar_t* guid, ZUKSwResult*** results, unsigned* count);
int ZUK_sw_free(ZUKSwCtx*);

#ifdef __cplusplus
}
#endif

#endif
