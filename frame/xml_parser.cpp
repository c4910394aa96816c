#include "frame/xml_parser.h"

#include <memory>

#include "frame/log.h"

namespace {
constexpr char kLocation[] = "XML_parser";
}

XMLNodeSink::XMLNodeSink(ZUKlog* theLog) : root(nullptr), log(theLog) {}
XMLNodeSink::~XMLNodeSink() {
    delete root;
}

int XMLNodeSink::onNodeTree(Node* tree) {
    root = tree;
    return 0;
}

int XMLNodeSink::onWarning(const String& message, int line) {
    if (log != nullptr) log->traceMAX(kLocation, "Warning in line %d: %S", line, message.text);
    return 0;
}

int XMLNodeSink::onError(const String& message, int line) {
    if (log != nullptr) log->traceMIN(kLocation, "Error in line %d: %S", line, message.text);
    return 0;
}

int XMLNodeSink::onCriticalError(const String& message, int line) {
    return XMLNodeSink::onError(message, line);
}

XMLParser::XMLParser(ZUKlog* theLog, const wchar_t* file) : errors(0), sink(nullptr), log(theLog) {
    // Owned here until all is done: a log callback may throw.
    auto owner = std::make_unique<XMLNodeSink>(theLog);
    NodeReader reader(*owner);
    reader.depthLimit = 0;
    reader.keepLayout = false;
    reader.dropComments = false;
    reader.dropInstructions = false;
    reader.process(String(file), 0);
    errors = reader.errorCount;
    sink = owner.release();
}

XMLParser::~XMLParser() {
    delete sink;
    sink = nullptr;
}

Node* XMLParser::getRootNode() {
    return sink->root;
}
