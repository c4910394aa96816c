#include "scanners/zukhw/ipp.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "scanners/shared/bytes.h"

namespace {

enum Tag : unsigned {
    kOperation = 0x01,
    kEnd = 0x03,
    kPrinter = 0x04,
    kFirstValue = 0x10,  // below are the beginnings of groups
    kInteger = 0x21,
    kBoolean = 0x22,
    kEnumeration = 0x23,
    kTextWithLanguage = 0x35,
    kNameWithLanguage = 0x36,
    kKeyword = 0x44,
    kCharset = 0x47,
    kLanguage = 0x48,
};

constexpr std::size_t kHeader = 8;  // version, operation or status, request

void append(std::string* request, Tag tag, std::string_view name, std::string_view value) {
    const auto length = [&](std::string_view text) {
        *request += static_cast<char>(text.size() >> 8U);
        *request += static_cast<char>(text.size() & 0xFFU);
    };
    *request += static_cast<char>(tag);
    length(name);
    request->append(name);
    length(value);
    request->append(value);
}

struct Attribute {
    unsigned tag = 0;
    std::string_view name;  // empty: one more value of the attribute before
    std::string_view value;
};

// Takes one attribute off the answer behind its tag; no value where it is cut.
std::optional<Attribute> takeAttribute(const Bytes& answer, std::size_t* at, unsigned tag) {
    Attribute attribute;
    attribute.tag = tag;
    for (std::string_view* part : {&attribute.name, &attribute.value}) {
        const auto length = answer.number(*at, 2);
        const auto text = length ? answer.piece(*at + 2, *length) : std::nullopt;
        if (!text) return std::nullopt;
        *part = *text;
        *at += 2 + text->size();
    }
    return attribute;
}

std::uint64_t numberOf(const Attribute& attribute) {
    const bool isNumber = attribute.tag == kInteger || attribute.tag == kEnumeration;
    return isNumber ? Bytes(attribute.value, Bytes::Order::Big).numberOr0(0, 4) : 0;
}

std::string flagOf(const Attribute& attribute) {
    if (attribute.tag != kBoolean || attribute.value.size() != 1) return "";
    return attribute.value[0] != 0 ? "Yes" : "No";
}

// Behind the language, where there is one.
std::string textOf(const Attribute& attribute) {
    if (attribute.tag != kTextWithLanguage && attribute.tag != kNameWithLanguage)
        return std::string(attribute.value);
    const Bytes bytes(attribute.value, Bytes::Order::Big);
    const std::uint64_t language = bytes.numberOr0(0, 2);
    return std::string(bytes.piece(4 + language, bytes.numberOr0(2 + language, 2)).value_or(""));
}

void setAttribute(PrintQueue* queue, std::string_view name, const Attribute& attribute) {
    constexpr std::uint64_t kClass = 0x1;
    constexpr std::uint64_t kDefault = 0x20000;
    constexpr std::uint64_t kStopped = 5;
    if (name == "printer-name") queue->name = textOf(attribute);
    if (name == "printer-info") queue->info = textOf(attribute);
    if (name == "printer-location") queue->location = textOf(attribute);
    if (name == "printer-make-and-model") queue->makeModel = textOf(attribute);
    if (name == "device-uri") queue->deviceUri = textOf(attribute);
    if (name == "member-names") queue->members.push_back(textOf(attribute));
    if (name == "printer-is-accepting-jobs") queue->accepting = flagOf(attribute);
    if (name == "printer-is-shared") queue->shared = flagOf(attribute);
    // One that prints at the moment is idle again when it is done.
    if (name == "printer-state") queue->state = numberOf(attribute) == kStopped ? "Stopped" : "Idle";
    if (name == "printer-type") {
        queue->isClass = (numberOf(attribute) & kClass) != 0;
        queue->isDefault = (numberOf(attribute) & kDefault) != 0;
    }
}

}  // namespace

std::string ippQueuesRequest() {
    static constexpr const char* kWanted[] = {"printer-name",      "printer-info",
                                              "printer-location",  "printer-make-and-model",
                                              "device-uri",        "member-names",
                                              "printer-type",      "printer-state",
                                              "printer-is-shared", "printer-is-accepting-jobs"};
    // Version 1.1, the server's operation 4002h, request 1.
    std::string request("\x01\x01\x40\x02\x00\x00\x00\x01", kHeader);
    request += static_cast<char>(kOperation);
    append(&request, kCharset, "attributes-charset", "utf-8");
    append(&request, kLanguage, "attributes-natural-language", "en");
    std::string_view name = "requested-attributes";
    for (const char* wanted : kWanted) {
        append(&request, kKeyword, name, wanted);
        name = "";
    }
    request += static_cast<char>(kEnd);
    return request;
}

std::vector<PrintQueue> parseIppQueues(std::string_view answer) {
    const Bytes bytes(answer, Bytes::Order::Big);
    std::vector<PrintQueue> queues;
    std::string_view name;
    bool isPrinter = false;
    for (std::size_t at = kHeader; at < answer.size();) {
        const auto tag = static_cast<unsigned>(bytes.numberOr0(at++, 1));
        if (tag == kEnd) break;
        if (tag < kFirstValue) {
            isPrinter = tag == kPrinter;
            if (isPrinter) queues.emplace_back();
            continue;
        }
        const auto attribute = takeAttribute(bytes, &at, tag);
        if (!attribute) break;
        if (!attribute->name.empty()) name = attribute->name;
        if (isPrinter) setAttribute(&queues.back(), name, *attribute);
    }
    for (PrintQueue& queue : queues) {
        if (queue.isClass) queue.deviceUri = queue.makeModel = "";  // what stands there is made up
    }
    queues.erase(std::remove_if(queues.begin(), queues.end(),
                                [](const PrintQueue& queue) { return queue.name.empty(); }),
                 queues.end());
    return queues;
}
