// What "zuksw --check" tells an author of each mistake: the place, what is wrong there, and what to do.
#include <algorithm>
#include <regex>
#include <sstream>

#include "tests/support/shell.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

struct MistakeCase {
    std::string file;
    std::string told;  // from the place on
};

// A file whose fourth line is the conditions, from column 5 on.
std::string with(const std::string& conditions) {
    return "<Signatures>\n<Signature guid=\"g\" name=\"n\">\n  <Detect>\n    " + conditions +
           "\n  </Detect>\n</Signature>\n</Signatures>\n";
}

// The same, behind a condition that binds the file f.
std::string withFile(const std::string& conditions) {
    return with("<File as=\"f\" name=\"x\"/>" + conditions);
}

// A file whose second line is this signature.
std::string one(const std::string& signature) {
    return "<Signatures>\n" + signature + "\n</Signatures>\n";
}

const std::string kDetect = "<Detect><File as=\"f\" name=\"x\"/></Detect>";

const MistakeCase kMistakes[] = {
    // The file.
    {"", ": line 1, column 1: not well-formed XML: no element found; open and close the root element"},
    {"text",
     ": line 1, column 1: not well-formed XML: syntax error; remove what is no markup and stands outside"},
    {"<Signature/>", ": line 1, column 1: the root is <Signature>; it must be <Signatures>"},
    {"<signatures/>", ": line 1, column 1: the root is <signatures>; it must be <Signatures>"},
    {"<Signatures/>\n<Signatures/>",
     ": line 2, column 1: not well-formed XML: junk after document element; put everything into one"},
    {"<?xml version='1.0'?>\n<!DOCTYPE Signatures>\n<Signatures/>",
     ": line 2, column 21: a DOCTYPE is not allowed; rem"},
    {"<Signatures>\n<?xml version='1.0'?></Signatures>",
     ": line 2, column 1: not well-formed XML: XML or text declaration not at start of entity; remove the"},
    {"\xFF\xFE<", ": line 1, column 1: this is UTF-16; save it as UTF-8"},
    {one("<Signature guid='g' name='n'>"),
     ": line 3, column 3: not well-formed XML: mismatched tag; close first what was opened last "
     "(<Signature> is"},
    {one("<Signature guid=g/>"),
     ": line 2, column 17: not well-formed XML: not well-formed (invalid token); write '<'"},
    {one("<Signature guid='g' guid='h'/>"),
     ": line 2, column 21: not well-formed XML: duplicate attribute; remove one"},
    {with("<Test value='a<b' eq='1'/>"),
     ": line 4, column 19: not well-formed XML: not well-formed (invalid token); wr"},
    {with("<Test value='a & b' eq='1'/>"),
     ": line 4, column 21: not well-formed XML: not well-formed (invalid token);"},
    {with("<Test value='&nbsp;' eq='1'/>"),
     ": line 4, column 5: not well-formed XML: undefined entity; write the charact"},
    {with("<Test value='" + std::string(65537, 'x') + "' eq='1'/>"),
     ": line 4, column 5: an attribute is longer than 64 KiB; shorten it"},
    {one("stray"), ":2:1: text between signatures is ignored; remove it"},
    {one("<Signatur guid='g' name='n'/>"),
     ":2:1: unknown element <Signatur> is ignored; did you mean 'Signature'?"},
    // The signature.
    {one("<Signature name='n'>" + kDetect + "</Signature>"),
     ":2:1: signature 'n': the attribute 'guid' is missing; add one that is used nowhere else"},
    {one("<Signature guid='g'>" + kDetect + "</Signature>"),
     ":2:1: signature 'g': the attribute 'name' is missing; add"},
    {one("<Signature guid='g' name='n'/>"),
     ":2:1: signature 'n': there is no <Detect>; add one with at least one cond"},
    {one("<Signature guid='g' name='n'><Detect/></Signature>"),
     ":2:30: signature 'n': <Detect>: there is no condition in it; add one"},
    {one("<Signature guid='g' name='n'><File name='x'/></Signature>"),
     ":2:30: signature 'n': unknown element <File>; a condition stands inside <Detect>"},
    {one("<Signature guid='g' name='n'>" + kDetect + "\n<Repotr/></Signature>"),
     ":3:1: signature 'n': unknown element <Repotr>; did you mean 'Report'?"},
    {one("<Signature guid='g' name='n' plaec='x'>" + kDetect + "</Signature>"),
     ":2:1: signature 'n': <Signature> has an unknown attribute 'plaec'; did you mean 'place'?"},
    {one("<Signature guid='g' name='n' per='file'>" + kDetect + "</Signature>"),
     ":2:1: signature 'n': per=\"file\": write 'place' or 'machine'"},
    {one("<Signature guid='g' name='n' language='2'>" + kDetect + "</Signature>"),
     ":2:1: signature 'n': it is written for language version 2; this scanner knows version 1; write it for "
     "that"},
    {one("<Signature guid='g' name='n' prefer='version'>" + kDetect + "</Signature>"),
     ":2:1: signature 'n': prefer=\"version\": nothing binds or reports that name; report it or correct it"},
    {one("<Signature guid='g' name='n'>" + kDetect + "</Signature>\n<Signature guid='g' name='m'>" + kDetect +
         "</Signature>"),
     ":3:1: signature 'm': another signature has the same guid; both run and both may report, so give one "
     "another"},
    {one("<Signature guid='g' name='n'><Input name='a'/>\n<Input name='a'/>" + kDetect + "</Signature>"),
     ":3:1: signature 'n': the Input 'a' stands there twice; remove one"},
    // Elements and attributes.
    {with("<Flie name='x'/>"), ":4:5: signature 'n': <Flie> is no condition; did you mean 'File'?"},
    {with("<file name='x'/>"), ":4:5: signature 'n': <file> is no condition; did you mean 'File'?"},
    {with("<File nmae='x'/>"),
     ":4:5: signature 'n': <File>: the attribute 'nmae' is unknown here; did you mean 'name'"},
    {with("<File name='x'><File name='y'/></File>"),
     ":4:5: signature 'n': <File>: this condition holds no other; move"},
    {with("<File/>"), ":4:5: signature 'n': <File>: it selects nothing; add 'name', 'nameMatch' or 'path'"},
    {with("stray <File name='x'/>"), ":4:5: signature 'n': text between conditions; remove it"},
    {with("<Content match='text'/>"),
     ":4:5: signature 'n': <Content>: the attribute 'of' is missing; add it"},
    {with("<Test value='1'/>"),
     ":4:5: signature 'n': <Test>: it compares with nothing; add eq, ne, lt, le, gt, ge or"},
    {with("<AtLeast count='2'><File name='x'/></AtLeast>"),
     ":4:5: signature 'n': <AtLeast>: 'count' is more than the conditions in it; it never holds"},
    // Values.
    {with("<File name='x' minSize='1K'/>"),
     ":4:5: signature 'n': <File>: minSize=\"1K\": write a whole number without"},
    {with("<File name='x' link='true'/>"),
     ":4:5: signature 'n': <File>: link=\"true\": write one of: no, yes"},
    {with("<File name='x' min='3' max='2'/>"), ":4:5: signature 'n': <File>: 'max' is smaller than 'min'"},
    {with("<File name='x' sha256='abc'/>"),
     ":4:5: signature 'n': <File>: 'sha256' holds something else than 64 hex di"},
    {with("<Test value='1' eq='1' scheme='debian'/>"),
     ":4:5: signature 'n': <Test>: scheme=\"debian\": no such scheme; write generic, which is right for "
     "most"},
    {with("<Package name='x' manager='yum'/>"),
     ":4:5: signature 'n': <Package>: 'yum' is no package manager; write any"},
    {with("<Package name='x' manager=', '/>"),
     ":4:5: signature 'n': <Package>: 'manager' is empty; name one or remove it"},
    {with("<System key='os.ID'/>"),
     ":4:5: signature 'n': <System>: key=\"os.ID\": no such fact; write os. and a key of"},
    {withFile("<Value of='f' format='toml' key='a'/>"),
     ":4:28: signature 'n': <Value>: format=\"toml\": write one of: keyvalue, properties, headers, ini, "
     "json, yaml"},
    {withFile("<Value of='f' format='json' key='a'/>"),
     ":4:28: signature 'n': <Value>: 'key': a JSON Pointer begins wi"},
    {withFile("<Content of='f' hex='7f4'/>"),
     ":4:28: signature 'n': <Content>: 'hex' is pairs of hex digits, or ?? fo"},
    // Globs and patterns.
    {with("<File name=''/>"),
     ":4:5: signature 'n': <File>: name=\"\": it is empty and matches nothing; write a glob"},
    {with("<File name='a[b'/>"),
     ":4:5: signature 'n': <File>: name=\"a[b\": '[' has no ']'; close it or write '\\['"},
    {with("<File name='a{b'/>"),
     ":4:5: signature 'n': <File>: name=\"a{b\": '{' has no '}'; close it or write '\\{'"},
    {with("<File name='a/b'/>"),
     ":4:5: signature 'n': <File>: name=\"a/b\": a name holds no '/'; use 'path' for direct"},
    {with("<File path='a/b'/>"),
     ":4:5: signature 'n': <File>: path=\"a/b\": an absolute path begins with '/' or '**';"},
    {with("<File name='x' under='opt'/>"),
     ":4:5: signature 'n': <File>: 'under' is an absolute directory; begin it wi"},
    {withFile("<File near='f' path='/b'/>"),
     ":4:28: signature 'n': <File>: with 'near' the path is relative; remove t"},
    {withFile("<Content of='f' match='(abc'/>"),
     "missing ): (abc; close it with ')', or write '\\(' for the character"},
    {withFile("<Content of='f' match='abc)'/>"),
     "unexpected ): abc); open it with '(', or write '\\)' for the charac"},
    {withFile("<Content of='f' match='[abc'/>"),
     "missing ]: [abc; close it with ']', or write '\\[' for the characte"},
    {withFile("<Content of='f' match='[z-a]'/>"),
     "invalid character class range: z-a; write the lower end of the ra"},
    {withFile("<Content of='f' match='*abc'/>"),
     "no argument for repetition operator: *; say what to repeat, or wri"},
    {withFile("<Content of='f' match='abc{1,2000}'/>"),
     "invalid repetition size: {1,2000}; repeat at most 1000 times"},
    {withFile("<Content of='f' match='(abc)\\1'/>"),
     "invalid escape sequence: \\1; there are no references back; wri"},
    {withFile("<Content of='f' match='abc\\y'/>"),
     "invalid escape sequence: \\y; write '\\\\' for a backslash"},
    {withFile("<Content of='f' match='abc\\'/>"), "trailing \\; write '\\\\' for a backslash"},
    {withFile("<Content of='f' match='a(?=b)'/>"),
     "invalid perl operator: (?=; there is no look-around; match more"},
    {withFile("<Content of='f' match='(?&lt;v>\\d)'/>"),
     "invalid perl operator: (?<; write (?P<name>...) to capture"},
    {withFile("<Content of='f' match='(?P&lt;v-1>\\d)'/>"),
     "invalid named capture group: (?P<v-1>; write (?P<name>..."},
    {withFile("<Content of='f' match='abc(?P&lt;1v>\\d)'/>"),
     "'1v' is no name; use up to 64 letters, digits and unde"},
    {with("<Set name='a' value='1' match='(1)' to='\\2'/>"),
     "<Set>: 'to' has '\\2'; write \\0 to \\1 for what 'match'"},
    // Names and templates.
    {with("<File as='my file' name='x'/>"),
     ":4:5: signature 'n': 'my file' is no name; use up to 64 letters, digits"},
    {with("<Set name='version' value='1'/><Test value='${verison}' eq='1'/>"),
     ":4:36: signature 'n': nothing binds 'verison'; did you mean 'version'?"},
    {with("<Test value='${x}' eq='1'/>"),
     ":4:5: signature 'n': nothing binds 'x'; declare it as an Input or bind it w"},
    {with("<Content of='wrong' match='text'/>"),
     ":4:5: signature 'n': nothing binds 'wrong'; bind it with the 'as' of File, Member or Library"},
    {with("<Package name='x' as='p'/><Content of='p' match='text'/>"),
     ":4:31: signature 'n': 'p' is no object of the kind wanted here; take the 'as' of File, Member or "
     "Library"},
    {withFile("<Test value='${f.pth}' eq='1'/>"),
     ":4:28: signature 'n': 'f' has no property 'pth'; did you mean 'path'"},
    {withFile("<Test value='${f.colour}' eq='1'/>"),
     ":4:28: signature 'n': 'f' has no property 'colour'; it has: path,"},
    {withFile("<Test value='${f}' eq='1'/>"),
     ":4:28: signature 'n': 'f' is an object; name one of its properties: pa"},
    {with("<Set name='t' value='1'/><Test value='${t.path}' eq='1'/>"),
     ":4:30: signature 'n': 't' is a text and has no property 'path'; write ${t}"},
    {with("<Test value='${x' eq='1'/>"),
     ":4:5: signature 'n': '${' has no '}'; close it or write '$$' for a dollar si"},
    {with("<Test value='${}' eq='1'/>"),
     ":4:5: signature 'n': '${}' is no reference; write ${name}, ${object.property"},
    {one("<Signature guid='g' name='n' place='${bin.path}'>" + kDetect + "</Signature>"),
     ":2:1: signature 'n': nothing binds 'bin'; bind it with the 'as' of a condition"},
    // References.
    {with("<Matched guid='other'/>"),
     ":4:5: signature 'n': <Matched>: no signature has the guid 'other'; correct it"},
    {with("<Matched guid='g'/>"),
     ":2:1: signature 'n': it depends on itself through <Matched>; break the cycle"},
};

class CheckMessages : public ScanTest {
  protected:
    // The lines but the last, which sums up.
    std::vector<std::string> messagesOf(const std::string& bytes) const {
        const std::string path = work_.file("s.xml", bytes);
        std::istringstream out(shell(program() + " --check -i " + path).out);
        std::vector<std::string> lines;
        for (std::string line; std::getline(out, line);) {
            if (line.find("zuksw: checked: ") != 0) lines.push_back(line);
        }
        return lines;
    }
};

}  // namespace

TEST_F(CheckMessages, EachMistakeHasItsPlaceAndRemedy) {
    for (const MistakeCase& c : kMistakes) {
        const std::vector<std::string> lines = messagesOf(c.file);
        const bool told = std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(c.told) != std::string::npos;
        });
        EXPECT_TRUE(told) << c.told << "\n" << (lines.empty() ? "nothing" : lines.front());
    }
}

TEST_F(CheckMessages, EveryMessageNamesFileLineAndColumn) {
    const std::regex place(
        "zuksw: (error|warning|info): \\S*/s\\.xml:(\\d+:\\d+| line \\d+, column \\d+): .*");
    for (const MistakeCase& c : kMistakes) {
        for (const std::string& line : messagesOf(c.file)) EXPECT_TRUE(std::regex_match(line, place)) << line;
    }
}
