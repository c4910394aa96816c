#include "hw/output_parser.h"

#include <cstdlib>

#include "frame/trace.h"
#include "hw/context.h"
#include "platform/xml_node.h"

namespace {

constexpr char kHere[] = "ZUK_hw_run";
constexpr int kOk = 0;
constexpr int kBadOutput = 104;

// Null for a node that has no child list.
const std::list<Node*>* childrenOf(const Node* node) {
    const std::list<Node*>* children = nullptr;
    if (node == nullptr || node->getChildren(&children) != 0) return nullptr;
    return children;
}

// The names of a stored instance, pointing into it; null for one without fields. Released with free().
const wchar_t** makeFieldNames(const HWInstance& instance) {
    if (instance.empty()) return nullptr;
    auto* names = static_cast<const wchar_t**>(std::malloc(instance.size() * sizeof(const wchar_t*)));
    if (names == nullptr) return nullptr;
    const wchar_t** next = names;
    for (const HWField& field : instance) *next++ = field.first.c_str();
    return names;
}

int storeInstance(ZUKHwCtx* ctx, const Node* node) {
    if (node->getType() != Node::kElement) return kBadOutput;
    const int group = HW_getGroupId(node->name.text);
    if (group < 1) {
        traceMIN(ctx->log, kHere, "Error: No such group [%S]", node->name.text);
        return kBadOutput;
    }
    HWInstance instance;
    if (const int status = HW_parseHWGroup(ctx, &instance, node); status != kOk) return status;

    std::vector<HWInstance>& stored = ctx->results[group];
    stored.push_back(std::move(instance));
    ctx->fields[group].push_back(makeFieldNames(stored.back()));
    return kOk;
}

}  // namespace

int HW_parseHWData(ZUKHwCtx* ctx, const Node* root) {
    const std::list<Node*>* children = childrenOf(root);
    if (children == nullptr) {
        traceMIN(ctx->log, kHere, "Error during a parse, no root data");
        return kBadOutput;
    }
    int instances = 0;
    for (const Node* child : *children) {
        if (const int status = storeInstance(ctx, child); status != kOk) return status;
        ++instances;
    }
    traceMAX(ctx->log, kHere, "Parse finish. %d groups successfully retrieved", instances);
    return kOk;
}

int HW_parseHWGroup(ZUKHwCtx* ctx, HWInstance* instance, const Node* node) {
    const std::list<Node*>* children = childrenOf(node);
    if (children == nullptr) return kOk;
    for (const Node* child : *children) {
        if (child->getType() != Node::kElement) return kBadOutput;
        HWField& field = instance->emplace_back(child->name.text, std::wstring());
        if (HW_parseHWField(ctx, child, field.second) != kOk) {
            instance->pop_back();
            return kBadOutput;
        }
    }
    return kOk;
}

int HW_parseHWField(ZUKHwCtx* ctx, const Node* node, std::wstring& value) {
    const std::list<Node*>* children = childrenOf(node);
    if (children == nullptr) return kOk;
    for (const Node* child : *children) {
        if (child->getType() != Node::kText) {
            traceMIN(ctx->log, "parseHWField()", "Error: unrecognized format of value in field [%S]",
                     node->name.text);
            return kBadOutput;
        }
        value.append(child->name.text);
    }
    return kOk;
}
