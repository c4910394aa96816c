#pragma once

#include <zuk.h>

#include <list>
#include <string>
#include <utility>

class Node;

// These read the scanner's tree: below the root one element an instance, below that one element a field,
// below that text. Each returns 0, or 104 for a tree of another shape.

// Stores every instance below `root`; those before an error stay stored.
int HW_parseHWData(ZUKHwCtx* ctx, const Node* root);
// Appends the fields of one instance to `instance`.
int HW_parseHWGroup(ZUKHwCtx* ctx, std::list<std::pair<std::wstring, std::wstring>>* instance,
                    const Node* node);
// Appends the texts of one field to `value`.
int HW_parseHWField(ZUKHwCtx* ctx, const Node* node, std::wstring& value);
