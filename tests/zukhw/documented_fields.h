#pragma once

#include <map>
#include <string>
#include <vector>

// A row of docs/fields.md.
struct DocumentedField {
    std::string name;
    bool isVolatile;
};

using DocumentedFields = std::map<std::string, std::vector<DocumentedField>>;

// The fields of every group that the document lists, in its order.
DocumentedFields readDocumentedFields();

// The groups that have a heading, in order.
std::vector<std::string> documentedGroups();
