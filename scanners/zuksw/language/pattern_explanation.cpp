#include "scanners/zuksw/language/pattern_explanation.h"

namespace zuksw {
namespace {

using Code = re2::RE2::ErrorCode;

struct Row {
    Code code;
    const char* remedy;
};

constexpr Row kRows[] = {
    {Code::ErrorBadCharClass, "write a class such as [a-z] or [[:digit:]]"},
    {Code::ErrorBadCharRange, "write the lower end of the range first"},
    {Code::ErrorMissingBracket, "close it with ']', or write '\\[' for the character"},
    {Code::ErrorMissingParen, "close it with ')', or write '\\(' for the character"},
    {Code::ErrorUnexpectedParen, "open it with '(', or write '\\)' for the character"},
    {Code::ErrorTrailingBackslash, "write '\\\\' for a backslash"},
    {Code::ErrorRepeatArgument, "say what to repeat, or write a backslash before the character"},
    {Code::ErrorRepeatSize, "repeat at most 1000 times, the lower number first"},
    {Code::ErrorRepeatOp, "write one repetition only, or put brackets around the inner one"},
    {Code::ErrorBadUTF8, "write bytes beyond ASCII as \\x and two hex digits"},
    {Code::ErrorBadNamedCapture, "write (?P<name>...), each name once"},
    {Code::ErrorPatternTooLarge, "it needs more memory than content/RegexMemory allows; repeat less"},
};

const char* remedyFor(const re2::RE2& engine) {
    if (engine.error_code() == Code::ErrorBadPerlOp) {
        return engine.error_arg() == "(?<"
                   ? "write (?P<name>...) to capture; what stands before or behind cannot be asked"
                   : "there is no look-around; match more, and capture the part that is wanted";
    }
    if (engine.error_code() == Code::ErrorBadEscape) {
        const std::string& escape = engine.error_arg();
        const bool back = escape.size() > 1 && escape[1] >= '1' && escape[1] <= '9';
        return back ? "there are no references back; write the text again" : "write '\\\\' for a backslash";
    }
    for (const Row& row : kRows) {
        if (row.code == engine.error_code()) return row.remedy;
    }
    return "correct it";
}

}  // namespace

std::string explainPattern(const re2::RE2& engine) {
    return engine.error() + "; " + remedyFor(engine);
}

}  // namespace zuksw
