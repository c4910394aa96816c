#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "scanners/zuksw/evaluation/check.h"
#include "scanners/zuksw/language/condition_reader.h"

namespace zuksw {

class DetectReader;

/** Takes the attributes (and with the reader's help the children) of one condition. Never null: a mistake is
 *  reported, and the signature does not run. */
using CheckMaker = std::unique_ptr<Check> (*)(ConditionReader& attributes, DetectReader& reader);

/** One kind of condition. */
struct CheckKind {
    std::string_view element;
    CheckMaker make;
    bool hasChildren;
    bool hasRowAttributes;  // min, max, optional
};

/** Every kind of condition that Detect may hold. A new one is a file in this folder and a row in this table.
 */
const std::vector<CheckKind>& checkKinds();

/** Null for an unknown element. */
const CheckKind* findCheckKind(std::string_view element);

std::unique_ptr<Check> makeAll(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeAny(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeNot(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeAtLeast(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeFile(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeContent(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeValue(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeMember(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makePackage(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeElf(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeLibrary(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeTag(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeSystem(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeProcess(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeMatched(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeTest(ConditionReader& attributes, DetectReader& reader);
std::unique_ptr<Check> makeSet(ConditionReader& attributes, DetectReader& reader);

}  // namespace zuksw
