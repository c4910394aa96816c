#include "sw/output_parser.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <memory>
#include <utility>

#include "frame/trace.h"
#include "frame/xml_parser.h"
#include "platform/xml_node.h"
#include "sw/context.h"
#include "sw/node_text.h"

namespace {

enum Status { kOk = 0, kNoContext = 3, kBadOutput = 204, kBadWarnings = 205 };

// The node library's forms of a text: one for events, one for parts of a matched signature.
constexpr int kEventForm = 1;
constexpr int kMetadataForm = 2;
constexpr int kExact = 1;

// Null for no node, and for one without a child list.
const std::list<Node*>* childrenOf(const Node* node) {
    const std::list<Node*>* children = nullptr;
    if (node == nullptr || node->getChildren(&children) != 0) return nullptr;
    return children;
}

bool isElement(const Node* node, const wchar_t* name) {
    return node->getType() == Node::kElement && std::wcscmp(node->name.text, name) == 0;
}

// Gives every attribute of the element to `take(key, value)`, in document order.
template <typename Take>
void forEachAttribute(const Node* element, Take take) {
    if (element == nullptr || element->attributes == nullptr) return;
    String key;
    String value;
    for (int i = 0; i < element->attributes->count; ++i) {
        if (element->attributes->getEntry(i, key, value) == 0) take(key, value);
    }
}

void readHead(const Node* element, ZUKSwResult& result) {
    static const String kGuid(L"guid");
    static const String kName(L"name");
    forEachAttribute(element, [&result](const String& key, const String& value) {
        if (key.compareTo(kGuid, kExact) == 0) result.guid = value.text;
        if (key.compareTo(kName, kExact) == 0) result.name = value.text;
    });
}

// A variable without a name is dropped.
void readVariable(const Node* element, ZUKSwResult& result) {
    std::wstring name;
    std::wstring setting;
    forEachAttribute(element, [&name, &setting](const String& key, const String& value) {
        if (key.compareTo(L"name") == 0) name = value.text;
        if (key.compareTo(L"value") == 0) setting = value.text;
    });
    if (!name.empty()) result.variables.insert_or_assign(std::move(name), std::move(setting));
}

void buildResultArray(ZUKSwCtx* ctx) {
    ctx->resultArray = nullptr;
    if (ctx->results.empty()) return;
    ctx->resultArray = static_cast<ZUKSwResult**>(std::malloc(ctx->results.size() * sizeof(ZUKSwResult*)));
    if (ctx->resultArray != nullptr) std::copy(ctx->results.begin(), ctx->results.end(), ctx->resultArray);
}

void buildWarningArray(ZUKSwCtx* ctx) {
    if (ctx->warnings.empty()) return;
    ctx->warningArray =
        static_cast<const wchar_t**>(std::malloc(ctx->warnings.size() * sizeof(const wchar_t*)));
    if (ctx->warningArray == nullptr) return;
    const wchar_t** next = ctx->warningArray;
    for (const std::wstring& warning : ctx->warnings) *next++ = warning.c_str();
}

// Reads one matched signature and appends it to the results.
void addResult(ZUKSwCtx* ctx, const Node* element, NodeText& text) {
    auto result = std::make_unique<ZUKSwResult>();
    readHead(element, *result);
    if (const std::list<Node*>* children = childrenOf(element)) {
        for (const Node* child : *children) {
            if (isElement(child, L"Metadata")) result->metadata = text.of(*child, kMetadataForm);
            if (isElement(child, L"Variable")) readVariable(child, *result);
        }
    }
    result->generateVariablesNames();
    ctx->results.push_back(result.get());
    static_cast<void>(result.release());
}

}  // namespace

int SW_ParseOutput(ZUKSwCtx* ctx, std::wstring outputPath, std::wstring warningPath) {
    auto output = std::make_unique<XMLParser>(ctx->log, outputPath.c_str());
    const auto warnings = std::make_unique<XMLParser>(ctx->log, warningPath.c_str());

    int status = kBadOutput;
    if (output->errors == 0) status = SW_parseOutData(ctx, output->getRootNode());
    if (status == kOk) {
        status = warnings->errors > 0 ? kBadWarnings : SW_parseWarnData(ctx, warnings->getRootNode());
    }
    output.reset();  // before the warnings' tree
    return status;
}

int SW_parseOutData(ZUKSwCtx* ctx, const Node* root) {
    if (ctx == nullptr) return kNoContext;
    traceMAX(ctx->log, "SW_parseOutData", "Parsing output file");
    NodeText text;
    if (const std::list<Node*>* children = childrenOf(root)) {
        for (const Node* child : *children) {
            if (isElement(child, L"MatchedSignature")) addResult(ctx, child, text);
        }
    }
    buildResultArray(ctx);
    return kOk;
}

int SW_parseMatchedSignature(ZUKSwCtx* ctx, const Node* element) {
    if (ctx == nullptr) return kNoContext;
    NodeText text;
    addResult(ctx, element, text);
    return kOk;
}

int SW_parseWarnData(ZUKSwCtx* ctx, const Node* root) {
    if (ctx == nullptr) return kNoContext;
    traceMAX(ctx->log, "SW_parseWarnData", "Parsing warn data");
    const std::list<Node*>* children = childrenOf(root);
    if (children == nullptr) return kOk;
    NodeText text;
    for (const Node* child : *children) {
        if (child->name.compareTo(L"Event") == 0) ctx->warnings.push_back(text.of(*child, kEventForm));
    }
    buildWarningArray(ctx);
    return kOk;
}
