#include "scanners/zuksw/output/results.h"

#include "scanners/zuksw/output/xml_escape.h"

namespace zuksw {
namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;
constexpr std::size_t kMaxGuids = 100;

void appendResult(const ResultObject& result, std::string* xml) {
    *xml += "  <MatchedSignature";
    appendAttribute("guid", result.guid, xml);
    appendAttribute("name", result.signatureName, xml);
    *xml += ">\n";
    for (const auto& [name, value] : result.variables) {
        *xml += "    <Variable";
        appendAttribute("name", name, xml);
        appendAttribute("value", value, xml);
        *xml += "/>\n";
    }
    if (!result.metadata.empty()) *xml += "    " + result.metadata + '\n';
    *xml += "  </MatchedSignature>\n";
}

}  // namespace

bool writeResults(const Outcomes& outcomes, std::uint64_t limit, Events* events, OutputFile* file) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Results>\n";
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < outcomes.signatures().signatures().size(); ++i) {
        for (const auto& result : outcomes.of(i).results) {
            if (++count > limit) continue;
            appendResult(*result, &xml);
            if (xml.size() < kBlock) continue;
            if (!file->write(xml)) return false;
            xml.clear();
        }
    }
    if (count > limit) {
        events->add(EventCode::kResultsLimit, {},
                    std::to_string(count - limit) + " results are left out; see limits/MaxResults");
    }
    return file->write(xml + "</Results>\n");
}

void reportUndecided(const Outcomes& outcomes, Events* events) {
    std::string guids;
    std::size_t count = 0;
    Causes causes = 0;
    for (std::size_t i = 0; i < outcomes.signatures().signatures().size(); ++i) {
        const Outcome& outcome = outcomes.of(i);
        if (!outcome.results.empty() || outcome.causes == 0) continue;
        causes |= outcome.causes;
        if (++count <= kMaxGuids) guids += " " + outcomes.signatures().signatures()[i].guid;
    }
    if (count == 0) return;
    const std::string more = count > kMaxGuids ? " and others" : "";
    events->add(EventCode::kUndecided, {},
                std::to_string(count) + " signatures could not be decided (" + describe(causes) +
                    "):" + guids + more);
}

}  // namespace zuksw
