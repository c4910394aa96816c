#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "scanners/zuksw/checks/group.h"
#include "scanners/zuksw/language/detect_reader.h"
#include "scanners/zuksw/language/scope.h"
#include "scanners/zuksw/language/template.h"

namespace zuksw {

/** A value that the signature takes from its caller. */
struct Input {
    Slot slot = 0;
    std::optional<std::string> value;  // preset or default; nothing: unset
};

struct ReportVariable {
    std::string name;
    Template value;
};

/** A piece of the metadata: XML to be written as it is, or a template whose text is to be escaped. */
struct MetadataPiece {
    enum class Type { kXml, kText, kAttribute };
    Type type = Type::kXml;
    std::string xml;
    Template text;
};

/** One signature, read and checked. */
struct Signature {
    std::string guid;
    std::string name;
    bool perMachine = false;
    std::optional<Template> place;
    std::optional<Template> prefer;             // a bound name
    std::optional<std::size_t> preferVariable;  // or one of `variables`
    std::size_t slots = 0;
    std::vector<Input> inputs;
    std::unique_ptr<All> detect;
    std::vector<ReportVariable> variables;
    std::vector<MetadataPiece> metadata;  // <Metadata> without its end tag, or nothing
    std::vector<GuidReference> references;
    bool valid = true;
};

}  // namespace zuksw
