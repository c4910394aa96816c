// Uses the exported classes as a program outside this repository does.
#include <fstream>
#include <iostream>
#include <string>

#include "frame/location.h"
#include "frame/log.h"
#include "frame/temporary_dir.h"
#include "frame/xml_parser.h"

namespace {

void count(int, int, void* messages, const char*, const char*) {
    ++*static_cast<int*>(messages);
}

// Counts the trees that come by, and keeps them as its base does.
class CountingSink : public XMLNodeSink {
  public:
    using XMLNodeSink::XMLNodeSink;
    int onNodeTree(Node* tree) override {
        ++trees;
        return XMLNodeSink::onNodeTree(tree);
    }

    int trees = 0;
};

}  // namespace

int main() {
    int messages = 0;
    ZUKlog log(1, count, &messages);
    TemporaryDir directory(&log, nullptr);
    std::wstring path;
    if (directory.init(L"consumer") != 0 || directory.getTmpFile(path, L"file", L".xml") != 0) return 1;
    std::ofstream(directory.WStringToString(path)) << "<a><b c='d'>text</b></a>";

    const std::list<Node*>* children = nullptr;
    String key;
    String value;
    {
        XMLParser parser(&log, path.c_str());
        Node* root = parser.getRootNode();
        if (parser.errors != 0 || root == nullptr || root->getChildren(&children) != 0) return 1;
        if (children->front()->attributes->getEntry(0, key, value) != 0 || value.compareTo(L"d") != 0)
            return 1;
        root->write(std::cout, 0);
    }
    CountingSink sink(&log);
    if (sink.onWarning(String(L"noted"), 1) != 0) return 1;

    ZUKlocation location(&log, "consumer", L"/opt//zuk");
    std::cout << " " << directory.WStringToString(location.getLocation()) << "\n";
    return directory.deleteFiles(true) == 0 && messages > 0 ? 0 : 1;
}
