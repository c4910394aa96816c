#pragma once

#include <list>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/xml_node.h"
#include "tests/support/temporary_folder.h"

// One diagnostic as a sink got it.
struct Diagnostic {
    std::string kind;  // "warning", "error" or "critical"
    std::wstring message;
    int line;
};

inline std::ostream& operator<<(std::ostream& out, const Diagnostic& diagnostic) {
    return out << diagnostic.kind << " in line " << diagnostic.line << ": "
               << std::string(diagnostic.message.begin(), diagnostic.message.end());
}

// Keeps the tree and every diagnostic.
class RecordingSink : public NodeSink {
  public:
    int onNodeTree(Node* root) override {
        ++trees;
        tree.reset(root);
        return 0;
    }
    int onWarning(const String& message, int line) override { return keep("warning", message, line); }
    int onError(const String& message, int line) override { return keep("error", message, line); }
    int onCriticalError(const String& message, int line) override { return keep("critical", message, line); }

    int trees = 0;
    std::unique_ptr<Node> tree;
    std::vector<Diagnostic> diagnostics;

  private:
    int keep(const char* kind, const String& message, int line) {
        diagnostics.push_back({kind, message.text, line});
        return 0;
    }
};

inline std::wstring widen(std::string_view text) {
    return {text.begin(), text.end()};
}

// A document that was read from a file of its own.
class Reading {
  public:
    explicit Reading(std::string_view document, void (*configure)(NodeReader&) = nullptr) {
        NodeReader reader(sink);
        if (configure != nullptr) configure(reader);
        status = reader.process(String(widen(folder_.file("document.xml", document)).c_str()), 0);
        errorCount = reader.errorCount;
    }
    const Node* root() const { return sink.tree.get(); }

    RecordingSink sink;
    int status;
    int errorCount;

  private:
    TemporaryFolder folder_;
};

// The child nodes; empty for a node that can have none.
inline std::vector<const Node*> childrenOf(const Node& node) {
    const std::list<Node*>* children = nullptr;
    if (node.getChildren(&children) != 0) return {};
    return {children->begin(), children->end()};
}

inline std::string written(const Node& node, int mode = 1) {
    std::ostringstream out;
    node.write(out, mode);
    return out.str();
}

// What a document is as a tree, as compact markup; the diagnostics where there is none.
inline std::string readAndWritten(std::string_view document) {
    const Reading reading(document);
    if (reading.root() != nullptr) return written(*reading.root());
    std::ostringstream out;
    for (const Diagnostic& diagnostic : reading.sink.diagnostics) out << diagnostic << "\n";
    return out.str();
}
