#include "scanners/zuksw/evaluation/result_maker.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/output/xml_escape.h"
#include "scanners/zuksw/versions/compare.h"

namespace zuksw {
namespace {

// A row on its way to a result.
struct Draft {
    std::string place;
    std::optional<std::string> preferred;
    std::vector<std::pair<std::string, std::string>> variables;
    std::string evidence;  // XML
    const Row* row;
};

std::string evidenceXml(const Row& row) {
    std::string xml;
    for (const Evidence& item : row.evidence()) {
        xml += "<Item";
        for (const auto& [name, value] : item.attributes) appendAttribute(name, value, &xml);
        xml += "/>";
    }
    return xml;
}

Draft makeDraft(const Signature& signature, const Row& row, const Context& context) {
    Draft draft;
    draft.row = &row;
    std::vector<std::optional<std::string>> values;
    for (const ReportVariable& variable : signature.variables) {
        values.push_back(expandForReport(variable.value, row, context));
        if (values.back()) draft.variables.emplace_back(variable.name, *values.back());
    }
    if (signature.place) draft.place = expandForReport(*signature.place, row, context).value_or("");
    if (signature.prefer) draft.preferred = expandForReport(*signature.prefer, row, context);
    if (signature.preferVariable) draft.preferred = values[*signature.preferVariable];
    draft.evidence = evidenceXml(row);
    return draft;
}

// The higher of two preferred values comes first; one that is missing comes last.
int comparePreference(const Draft& a, const Draft& b) {
    if (!a.preferred || !b.preferred) return (a.preferred ? 0 : 1) - (b.preferred ? 0 : 1);
    return compareVersions(Scheme::kGeneric, *b.preferred, *a.preferred).value_or(0);
}

bool comesBefore(const Draft& a, const Draft& b) {
    return std::tie(a.place, a.variables, a.evidence) < std::tie(b.place, b.variables, b.evidence);
}

std::string metadataXml(const Signature& signature, const Draft& draft, const Context& context) {
    std::string xml;
    for (const MetadataPiece& piece : signature.metadata) {
        if (piece.type == MetadataPiece::Type::kXml) {
            xml += piece.xml;
            continue;
        }
        const std::string text = expandForReport(piece.text, *draft.row, context).value_or("");
        const auto append = piece.type == MetadataPiece::Type::kText ? appendXmlText : appendXmlAttribute;
        append(text, &xml);
    }
    if (context.machine.configuration.output.evidence && !draft.evidence.empty()) {
        if (xml.empty()) xml = "<Metadata>";
        xml += "<Evidence>" + draft.evidence + "</Evidence>";
    }
    return xml.empty() ? xml : xml + "</Metadata>";
}

// Leaves one draft for each result: of those with the same place the preferred, else the first in order.
void merge(const Signature& signature, std::vector<Draft>* drafts) {
    std::sort(drafts->begin(), drafts->end(), comesBefore);
    const auto prefer = [](const Draft& a, const Draft& b) { return comparePreference(a, b) < 0; };
    if (signature.perMachine) {
        std::stable_sort(drafts->begin(), drafts->end(), prefer);
        if (drafts->size() > 1) drafts->erase(drafts->begin() + 1, drafts->end());
        return;
    }
    const bool byPlace = signature.place.has_value();
    const auto same = [&](const Draft& a, const Draft& b) {
        return byPlace ? a.place == b.place : a.variables == b.variables;
    };
    std::stable_sort(drafts->begin(), drafts->end(), [&](const Draft& a, const Draft& b) {
        if (byPlace && a.place != b.place) return a.place < b.place;
        if (!byPlace && a.variables != b.variables) return a.variables < b.variables;
        return prefer(a, b);
    });
    drafts->erase(std::unique(drafts->begin(), drafts->end(), same), drafts->end());
}

}  // namespace

Outcome makeOutcome(const Signature& signature, const Rows& rows, const Context& context) {
    Outcome outcome;
    std::vector<Draft> drafts;
    for (const Row& row : rows) {
        if (row.isDecided()) {
            drafts.push_back(makeDraft(signature, row, context));
        } else {
            outcome.causes |= row.causes();
        }
    }
    merge(signature, &drafts);
    for (Draft& draft : drafts) {
        auto result = std::make_shared<ResultObject>();
        result->guid = signature.guid;
        result->signatureName = signature.name;
        result->metadata = metadataXml(signature, draft, context);
        result->variables = std::move(draft.variables);
        outcome.results.push_back(std::move(result));
    }
    return outcome;
}

}  // namespace zuksw
