/** @file zuk.h
 *  Inventory of a Linux machine: which hardware it has, and which software, judged by signatures that the
 *  caller supplies.
 *
 *  The library does not examine the machine itself. For every request it writes configuration files into a
 *  private temporary directory, runs a scanner ("zukhw" or "zuksw") from the home directory, and answers
 *  queries from the file that the scanner wrote.
 *
 *  Order of calls: ZUK_init; from its context any number of scan contexts with ZUK_hw_init and ZUK_sw_init;
 *  on each of them options, a run, queries, as often as wanted; ZUK_hw_free and ZUK_sw_free for every scan
 *  context; ZUK_free last.
 *
 *  Every function returns a status, 0 for success. On failure nothing is written through the pointer
 *  arguments, unless a function says otherwise.
 *
 *  Text is wide. Towards the operating system (paths, environment, the files for the scanners) each
 *  character is narrowed to its low byte, without any encoding: pass the bytes of a path one a character.
 *
 *  Threads: no thread is started. A library context and its scan contexts together are to be used by one
 *  thread at a time; different library contexts are independent. Calls block; a run lasts as long as its
 *  scanner.
 */
#ifndef ZUK_H
#define ZUK_H

#include <wchar.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The library context: the caller's name, its logger, the private temporary directory, the home
 *  directory. */
typedef struct ZUKCtx ZUKCtx;
/** A hardware scan: the groups to look for, and what the last run found. */
typedef struct ZUKHwCtx ZUKHwCtx;
/** A software scan: its options, and the results of the last evaluation. */
typedef struct ZUKSwCtx ZUKSwCtx;
/** One matched signature. Owned by the software context that it came from; valid until that context's next
 *  evaluation or release. */
typedef struct ZUKSwResult ZUKSwResult;

/** Receives every diagnostic message; nothing is filtered before it.
 *
 *  It runs on the thread of the call that speaks, under a lock that all loggers of the process share: it
 *  must not call back into the library.
 *
 *  @param message_level  0 errors and warnings, 1 notable conditions, 2 tracing detail
 *  @param logger_level   1 from a library context, 3 from a hardware context, 4 from a software context
 *  @param user_data      as given with the callback
 *  @param location       the function that speaks; a constant
 *  @param text           the message in the current locale's encoding; released when the callback returns
 */
typedef void (*ZUK_log_callback)(int message_level, int logger_level, void* user_data, const char* location,
                                 const char* text);

/** Creates a library context.
 *
 *  Creates a private directory (mode 0700). A missing installation is no error: it is logged, and runs from
 *  the context will fail with 103 or 203.
 *
 *  @param exploiter   name of the calling product; copied
 *  @param callback    receives the context's messages; may be null
 *  @param user_data   handed to the callback untouched
 *  @param temp_base   directory to create the private directory in; null for the value of the environment
 *                     variable TEMP, else of TMP, else /tmp
 *  @param home_dir    directory that holds the scanners; null for the directory "bin" below the one that
 *                     the installation file /etc/zuk/zuk.ini names
 *  @param out         receives the context; release it with ZUK_free
 *  @return 0; 2 exploiter null; 4 or 5 no memory; 6 the private directory could not be created (see the
 *          log). After 6 the memory of the logger and the directory object is kept.
 */
int ZUK_init(const char* exploiter, ZUK_log_callback callback, void* user_data, const wchar_t* temp_base,
             const wchar_t* home_dir, ZUKCtx** out);

/** Releases a library context and removes its private directory.
 *
 *  Every scan context made from it must have been released before: the directory is not removed
 *  recursively and stays if anything is left in it.
 *
 *  @param ctx  the context; invalid after 0
 *  @return 0; 3 ctx null; 2 the context carries no exploiter name; 6 its directory was never created
 */
int ZUK_free(ZUKCtx* ctx);

/** Creates a hardware context. All groups start disabled.
 *
 *  A temporary directory that cannot be created is only logged; ZUK_hw_run then fails with 102.
 *
 *  @param library    a context of ZUK_init; borrowed, must outlive the new one
 *  @param callback   receives the context's messages; may be null
 *  @param user_data  handed to the callback untouched
 *  @param out        receives the context (null after 5); release it with ZUK_hw_free
 *  @return 0; 3 library null; 5 no memory
 */
int ZUK_hw_init(ZUKCtx* library, ZUK_log_callback callback, void* user_data, ZUKHwCtx** out);

/** Enables or disables a group of hardware information for the next run.
 *
 *  The results of an earlier run cannot be read any more afterwards (107) until the next run.
 *
 *  @param ctx    the hardware context
 *  @param group  1 to 51; 0 for all groups at once. Numbers that name no group (17, 18, 33) are accepted.
 *  @param value  1 to enable, 0 to disable
 *  @return 0; 3 ctx null; 7 value above 1; 101 group out of range
 */
int ZUK_hw_setopt(ZUKHwCtx* ctx, int group, unsigned char value);

/** Gives the name of a group, for example "OperatingSystem" for 4.
 *
 *  @param ctx    the hardware context
 *  @param group  1 to 51
 *  @param name   receives the name, a constant that is never released; must not be null
 *  @return 0; 3 ctx null; 101 group out of range, or a number that names no group
 */
int ZUK_hw_get_group_name(ZUKHwCtx* ctx, int group, const wchar_t** name);

/** Gives the exit status of the last run's scanner.
 *
 *  @param ctx   the hardware context
 *  @param code  receives the exit status (128 + n for a scanner killed by signal n), or -1 when no scanner
 *               has run since the context was made or an option was changed, or it could not be started
 *  @return 0; 3 ctx null; 109 code null
 */
int ZUK_hw_get_returncode(ZUKHwCtx* ctx, int* code);

/** Scans the hardware for the enabled groups. Blocks until the scanner has ended.
 *
 *  Replaces the results of the run before, also when it fails.
 *
 *  @param ctx  the hardware context
 *  @return 0; 3 ctx null; 102 the scanner's configuration file could not be written; 103 the scanner could
 *          not be started or ended with a non-zero exit status; 104 its output could not be read or has the
 *          wrong shape
 */
int ZUK_hw_run(ZUKHwCtx* ctx);

/** Gives the number of instances of a group that the last run found.
 *
 *  @param ctx    the hardware context
 *  @param group  1 to 51
 *  @param count  receives the number; instances are numbered from 0
 *  @return 0; 3 ctx null; 109 count null; 107 no successful run since the last change of options; 101 group
 *          out of range; 108 group not enabled
 */
int ZUK_hw_get_group_instances(ZUKHwCtx* ctx, int group, int* count);

/** Gives the names of an instance's fields.
 *
 *  @param ctx       the hardware context
 *  @param group     1 to 51
 *  @param instance  0 to the number of instances less 1
 *  @param names     receives an array of count names in the scanner's order, equal names included; null
 *                   when count is 0. Owned by ctx, valid until its next run or release.
 *  @param count     receives the number of names
 *  @return 0; 3 ctx null; 109 names or count null; 107 no successful run since the last change of options;
 *          101 group out of range; 108 group not enabled; 105 no such instance
 */
int ZUK_hw_get_fields(ZUKHwCtx* ctx, int group, int instance, const wchar_t*** names, int* count);

/** Gives the value of one field. Units are in the field's name.
 *
 *  @param ctx       the hardware context
 *  @param group     1 to 51
 *  @param instance  0 to the number of instances less 1
 *  @param field     the exact name, case matters; of equal names the first counts
 *  @param value     receives the value, perhaps empty. Owned by ctx, valid until its next run or release.
 *  @return 0; 3 ctx null; 109 field or value null; 107 no successful run since the last change of options;
 *          101 group out of range; 108 group not enabled; 105 no such instance; 106 no such field
 */
int ZUK_hw_get_value(ZUKHwCtx* ctx, int group, int instance, const wchar_t* field, const wchar_t** value);

/** Releases a hardware context with its temporary files and all it handed out.
 *
 *  @param ctx  the context; invalid afterwards
 *  @return 0; 3 ctx null
 */
int ZUK_hw_free(ZUKHwCtx* ctx);

/** Creates a software context.
 *
 *  A temporary directory that cannot be created is only logged; evaluations then fail with 201.
 *
 *  @param libCtx     a context of ZUK_init, not null; borrowed, must outlive the new one
 *  @param callback   receives the context's messages; may be null
 *  @param user_data  handed to the callback untouched
 *  @param out        receives the context (null after 5), not null; release it with ZUK_sw_free
 *  @return 0; 5 no memory
 */
int ZUK_sw_init(ZUKCtx* libCtx, ZUK_log_callback callback, void* user_data, ZUKSwCtx** out);

/** Adds an attribute to the configuration of one of the scanner's plug-ins.
 *
 *  Attributes add up: one that is set twice is handed to the scanner twice, in order. They last until the
 *  context is released. The strings are copied and reach the scanner's XML file unescaped: quotes,
 *  ampersands and less-than signs are the caller's business.
 *
 *  @param ctx        the software context
 *  @param plugin     name of the plug-in
 *  @param attribute  name of the attribute
 *  @param value      its value
 *  @return 0; 3 ctx null; 7 one of the strings null
 */
int ZUK_sw_setopt_config(ZUKSwCtx* ctx, const wchar_t* plugin, const wchar_t* attribute,
                         const wchar_t* value);

/** Sets a variable that signatures may take as input.
 *
 *  A variable has one value and one scope: the last setting of a name counts. It lasts until the context is
 *  released. The strings are copied and reach the scanner's XML file unescaped, as in ZUK_sw_setopt_config.
 *
 *  @param ctx    the software context
 *  @param name   name of the variable
 *  @param value  its value
 *  @param scope  GUID of the signature it is for; empty for all
 *  @return 0; 3 ctx null; 7 one of the strings null
 */
int ZUK_sw_setopt_variable(ZUKSwCtx* ctx, const wchar_t* name, const wchar_t* value, const wchar_t* scope);

/** Evaluates one signature. Blocks until the scanner has ended.
 *
 *  Discards the results of the evaluation before, also when it fails; not so when an argument is null.
 *
 *  @param ctx        the software context
 *  @param signature  XML text of one or more signature elements, without an XML declaration; handed to the
 *                    scanner unexamined
 *  @return 0; 3 ctx null; 202 signature null, or rejected by the scanner; 201 the configuration or the
 *          signature file could not be written; 203 the scanner could not be started or failed; 204 its
 *          output could not be read; 205 its warnings could not be read, the results are kept; 6 no name
 *          for its files could be had
 */
int ZUK_sw_evaluate(ZUKSwCtx* ctx, const wchar_t* signature);

/** Evaluates several signatures in one scan. As ZUK_sw_evaluate, except for the codes of files that could
 *  not be written.
 *
 *  @param ctx         the software context
 *  @param signatures  count texts, each as for ZUK_sw_evaluate
 *  @param count       the number of texts
 *  @return 0; 3 ctx null; 202 signatures null, the signature file could not be written (a null text
 *          included), or rejected by the scanner; 201 the configuration file could not be written; 203,
 *          204, 205, 6 as ZUK_sw_evaluate
 */
int ZUK_sw_evaluate_multi(ZUKSwCtx* ctx, const wchar_t** signatures, unsigned count);

/** Evaluates the signatures of a file that the caller keeps. As ZUK_sw_evaluate.
 *
 *  @param ctx   the software context
 *  @param path  the file, with the root element "Signatures"; neither copied nor examined nor deleted
 *  @return 0; 3 ctx null; 202 path null, or rejected by the scanner (a missing file included); 201 the
 *          configuration file could not be written; 203, 204, 205, 6 as ZUK_sw_evaluate
 */
int ZUK_sw_evaluate_file(ZUKSwCtx* ctx, const wchar_t* path);

/** Gives the exit status of the last evaluation's scanner.
 *
 *  @param ctx  the software context
 *  @param rc   receives the exit status (128 + n for a scanner killed by signal n), or -1 when no scanner
 *              has run since the context was made or an option was changed, or it could not be started
 *  @return 0; 3 ctx null; 209 rc null
 */
int ZUK_sw_get_returncode(ZUKSwCtx* ctx, int* rc);

/** Gives all results of the last evaluation.
 *
 *  @param ctx      the software context
 *  @param results  receives an array of count handles in the order of the signatures; null when count is 0.
 *                  Owned by ctx, valid until its next evaluation or release.
 *  @param count    receives the number of results
 *  @return 0; 3 ctx null; 206 no successful evaluation since the last change of options; 209 results or
 *          count null
 */
int ZUK_sw_get_results(ZUKSwCtx* ctx, ZUKSwResult*** results, unsigned* count);

/** Gives the warnings of the last evaluation, also of a failed one.
 *
 *  @param ctx       the software context
 *  @param warnings  receives an array of count texts, each an XML element. Owned by ctx, valid until its
 *                   next evaluation or release. Left untouched when there are no warnings: set it to null
 *                   before.
 *  @param count     receives the number of warnings. Left untouched when there are none: set it to 0 before.
 *  @return 0; 3 ctx null; 209 warnings or count null
 */
int ZUK_sw_get_warnings(ZUKSwCtx* ctx, const wchar_t*** warnings, unsigned* count);

/** Gives the names of a result's variables.
 *
 *  @param ctx     the software context
 *  @param result  a handle from this context's last evaluation
 *  @param names   receives an array of count names in ascending order; null when count is 0. Owned by the
 *                 result.
 *  @param count   receives the number of names
 *  @return 0; 3 ctx null; 206 no successful evaluation since the last change of options; 209 names or count
 *          null; 207 result null
 */
int ZUK_sw_get_variables(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t*** names, unsigned* count);

/** Gives the value of one of a result's variables.
 *
 *  @param ctx     the software context
 *  @param result  a handle from this context's last evaluation
 *  @param name    the exact name, case matters
 *  @param value   receives the value. Owned by the result.
 *  @return 0; 3 ctx null; 206 no successful evaluation since the last change of options; 207 result null;
 *          209 value null; 208 name null, or no variable of that name
 */
int ZUK_sw_get_value(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t* name, const wchar_t** value);

/** Gives a result's metadata.
 *
 *  @param ctx       the software context
 *  @param result    a handle from this context's last evaluation
 *  @param metadata  receives the XML text of the Metadata element, one byte of UTF-8 a character (bytes
 *                   above 127 are negative); empty when there is none. Owned by the result.
 *  @return 0; 3 ctx null; 206 no successful evaluation since the last change of options; 209 metadata null;
 *          207 result null
 */
int ZUK_sw_get_metadata(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t** metadata);

/** Gives the GUID of the signature that a result comes from.
 *
 *  @param ctx     the software context
 *  @param result  a handle from this context's last evaluation
 *  @param guid    receives the GUID as the signature spells it, perhaps empty. Owned by the result.
 *  @return 0; 3 ctx null; 206 no successful evaluation since the last change of options; 209 guid null;
 *          207 result null
 */
int ZUK_sw_get_guid(ZUKSwCtx* ctx, const ZUKSwResult* result, const wchar_t** guid);

/** Finds the first result of a signature. Answers from the results held, whatever the last status was.
 *
 *  @param ctx     the software context
 *  @param guid    the exact GUID, case matters; must not be null
 *  @param result  receives the handle. Owned by ctx, valid until its next evaluation or release.
 *  @return 0; 3 ctx null; 209 result null; 210 no such result
 */
int ZUK_sw_find_result_by_guid(ZUKSwCtx* ctx, const wchar_t* guid, ZUKSwResult** result);

/** Finds all results of a signature. Answers from the results held, whatever the last status was.
 *
 *  @param ctx      the software context
 *  @param guid     the exact GUID, case matters; must not be null
 *  @param results  receives an array of count handles, the same one at every call. Owned by ctx, valid until
 *                  its next evaluation or release.
 *  @param count    receives the number of handles
 *  @return 0; 3 ctx null; 209 results or count null; 210 no such result
 */
int ZUK_sw_find_results_by_guid(ZUKSwCtx* ctx, const wchar_t* guid, ZUKSwResult*** results, unsigned* count);

/** Releases a software context with its options, its temporary files and all it handed out.
 *
 *  @param ctx  the context; invalid afterwards
 *  @return 0; 3 ctx null
 */
int ZUK_sw_free(ZUKSwCtx* ctx);

#ifdef __cplusplus
}
#endif

#endif
