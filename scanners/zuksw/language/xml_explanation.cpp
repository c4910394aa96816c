#include "scanners/zuksw/language/xml_explanation.h"

namespace zuksw {
namespace {

struct Row {
    XML_Error error;
    const char* remedy;
};

constexpr Row kRows[] = {
    {XML_ERROR_NO_ELEMENTS, "open and close the root element"},
    {XML_ERROR_SYNTAX, "remove what is no markup and stands outside the root element"},
    {XML_ERROR_INVALID_TOKEN, "write '<' as &lt; and '&' as &amp;, and put values into quotes"},
    {XML_ERROR_UNCLOSED_TOKEN, "complete the tag in which the file ends"},
    {XML_ERROR_PARTIAL_CHAR, "complete the character in which the file ends"},
    {XML_ERROR_TAG_MISMATCH, "close first what was opened last"},
    {XML_ERROR_DUPLICATE_ATTRIBUTE, "remove one of the two"},
    {XML_ERROR_JUNK_AFTER_DOC_ELEMENT, "put everything into one root element"},
    {XML_ERROR_UNDEFINED_ENTITY, "write the character itself or its number, such as &#233;"},
    {XML_ERROR_BAD_CHAR_REF, "correct the number between '&#' and ';'"},
    {XML_ERROR_UNKNOWN_ENCODING, "save the file as UTF-8"},
    {XML_ERROR_INCORRECT_ENCODING, "save the file as UTF-8"},
    {XML_ERROR_MISPLACED_XML_PI, "remove the declaration, or what stands before it"},
    {XML_ERROR_UNCLOSED_CDATA_SECTION, "close it with ]]>"},
    {XML_ERROR_XML_DECL, "write <?xml version=\"1.0\"?>"},
};

const char* remedyFor(XML_Error error) {
    for (const Row& row : kRows) {
        if (row.error == error) return row.remedy;
    }
    return "correct it";
}

}  // namespace

std::string explainXml(XML_Error error, std::string_view open) {
    std::string text =
        std::string("not well-formed XML: ") + XML_ErrorString(error) + "; " + remedyFor(error);
    return open.empty() ? text : text + " (<" + std::string(open) + "> is open)";
}

}  // namespace zuksw
