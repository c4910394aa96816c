#pragma once

#include <map>
#include <string>

// One matched signature.
struct ZUKSwResult {
    ZUKSwResult();
    ~ZUKSwResult();
    ZUKSwResult(const ZUKSwResult&) = delete;
    ZUKSwResult& operator=(const ZUKSwResult&) = delete;

    // Makes variableNames from the variables. Called once, when all variables are there.
    void generateVariablesNames();

    std::wstring guid;
    std::wstring name;
    std::wstring metadata;  // the text of the Metadata element; bytes above 127 are negative characters
    std::map<std::wstring, std::wstring> variables;  // by name; names are never empty
    const wchar_t** variableNames;  // one a variable, pointing at the map's keys; null without variables
};
