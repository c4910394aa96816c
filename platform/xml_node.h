#pragma once

#include <iosfwd>
#include <list>

// A wide-character string.
class String {
  public:
    String();
    String(const wchar_t* text);  // copies
    ~String();
    int compareTo(const wchar_t* other) const;
    int compareTo(const String& other, int mode) const;

    const wchar_t* text;
};

// An element's attributes, in document order.
class StringMap {
  public:
    int getEntry(int index, String& key, String& value) const;

    int count;
};

class Node {
  public:
    virtual ~Node();
    virtual int getType() const;
    virtual void write(std::ostream& out, int mode) const;
    int getChildren(const std::list<Node*>** children) const;

    String name;
    StringMap* attributes;
};

class NodeSink {
  public:
    virtual int onNodeTree(Node* root) = 0;
    virtual int onWarning(const String& message, int line);
    virtual int onError(const String& message, int line);
    virtual int onCriticalError(const String& message, int line);
    virtual ~NodeSink();
};
