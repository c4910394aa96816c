#pragma once

#include "platform/xml_node.h"

class ZUKlog;

// Takes a reader's tree and turns its diagnostics into log lines.
class XMLNodeSink : public NodeSink {
  public:
    explicit XMLNodeSink(ZUKlog* log);  // log may be null
    ~XMLNodeSink() override;
    XMLNodeSink(const XMLNodeSink&) = delete;
    XMLNodeSink& operator=(const XMLNodeSink&) = delete;

    int onNodeTree(Node* tree) override;
    int onWarning(const String& message, int line) override;
    int onError(const String& message, int line) override;
    int onCriticalError(const String& message, int line) override;

    Node* root;  // owned; null until a tree was handed over
    ZUKlog* log;
};

// Parses one XML file when it is constructed and keeps its tree.
class XMLParser {
  public:
    XMLParser(ZUKlog* log, const wchar_t* file);  // log may be null
    ~XMLParser();
    XMLParser(const XMLParser&) = delete;
    XMLParser& operator=(const XMLParser&) = delete;

    // Null when there is no tree. It and all its nodes are valid until the parser is destroyed.
    Node* getRootNode();

    int errors;  // greater than 0: the file is not to be trusted
    XMLNodeSink* sink;
    ZUKlog* log;
};
