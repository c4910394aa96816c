#include "sw/result.h"

#include <zuk.h>

#include <cstdlib>

ZUKSwResult::ZUKSwResult() : variableNames(nullptr) {}

ZUKSwResult::~ZUKSwResult() {
    std::free(variableNames);
}

void ZUKSwResult::generateVariablesNames() {
    if (variables.empty()) return;
    variableNames = static_cast<const wchar_t**>(std::malloc(variables.size() * sizeof(const wchar_t*)));
    if (variableNames == nullptr) return;
    const wchar_t** next = variableNames;
    for (const auto& variable : variables) *next++ = variable.first.c_str();
}
