#include "scanners/shared/packages/deb822.h"
#include "scanners/shared/packages/text.h"
#include "scanners/zuksw/formats/extractors.h"
#include "scanners/zuksw/versions/characters.h"

namespace zuksw {

namespace {

// What goes on with a field depends on the file, and the first field tells which kind it is.
struct Kind {
    bool manifest =
        false;  // long lines are cut anywhere, so their pieces are joined without anything between
    bool bodyFollows = false;  // after the first empty line comes free text
};

Kind kindOf(std::string_view firstField) {
    Kind kind;
    kind.manifest = compareNoCase(firstField, "Manifest-Version") == 0 ||
                    compareNoCase(firstField, "Signature-Version") == 0;
    kind.bodyFollows = compareNoCase(firstField, "Metadata-Version") == 0;
    return kind;
}

std::string valueOf(const Deb822Reader& reader, const Kind& kind) {
    std::string value(kind.manifest ? reader.untrimmedValue() : reader.value());
    std::string_view rest = reader.continuation();
    while (!rest.empty()) {
        std::string_view line = takeLine(rest).substr(1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (!kind.manifest) value += '\n';
        value += line;
    }
    return value;
}

}  // namespace

Values extractHeaders(std::string_view text, std::string_view key) {
    using Item = Deb822Reader::Item;
    Values values;
    Deb822Reader reader(text);
    std::optional<Kind> kind;
    for (Item item = reader.next(); item != Item::End; item = reader.next()) {
        if (item == Item::EndOfParagraph && kind && kind->bodyFollows) break;
        if (item != Item::Field) continue;
        if (!kind) kind = kindOf(reader.name());
        if (compareNoCase(reader.name(), key) == 0) values.found.push_back(valueOf(reader, *kind));
    }
    return values;
}

}  // namespace zuksw
