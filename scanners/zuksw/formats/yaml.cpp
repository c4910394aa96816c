#include <yaml.h>

#include "scanners/zuksw/formats/extractors.h"
#include "scanners/zuksw/formats/tree_path.h"

namespace zuksw {

namespace {

class Parser {
  public:
    explicit Parser(std::string_view text) : ready_(yaml_parser_initialize(&parser_) == 1) {
        if (!ready_) return;
        if (text.empty()) text = "";  // the library wants a place, even of no bytes
        const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
        yaml_parser_set_input_string(&parser_, bytes, text.size());
    }
    ~Parser() {
        if (ready_) yaml_parser_delete(&parser_);
    }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    bool next(yaml_event_t* event) { return ready_ && yaml_parser_parse(&parser_, event) == 1; }

  private:
    yaml_parser_t parser_;
    bool ready_;
};

class Event {
  public:
    Event() = default;
    ~Event() { yaml_event_delete(&event_); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    yaml_event_t* get() { return &event_; }
    yaml_event_type_t type() const { return event_.type; }
    std::string_view scalar() const {
        return {reinterpret_cast<const char*>(event_.data.scalar.value), event_.data.scalar.length};
    }
    bool isPlain() const { return event_.data.scalar.style == YAML_PLAIN_SCALAR_STYLE; }

  private:
    yaml_event_t event_ = {};
};

// Follows the events of a document. In mappings keys and values take turns; a key that is itself a mapping or
// a sequence has no name that a pointer could hold.
class Extraction {
  public:
    explicit Extraction(std::string_view pointer) : path_(pointer) {}

    // False: the document is deeper than allowed, or has an alias.
    bool take(const Event& event) {
        switch (event.type()) {
            case YAML_MAPPING_START_EVENT:
                return enter(true);
            case YAML_SEQUENCE_START_EVENT:
                return enter(false);
            case YAML_MAPPING_END_EVENT:
            case YAML_SEQUENCE_END_EVENT:
                open_.pop_back();
                path_.leave();
                return true;
            case YAML_SCALAR_EVENT:
                takeScalar(event);
                return true;
            default:
                return event.type() != YAML_ALIAS_EVENT;
        }
    }
    std::vector<std::string> takeFound() { return std::move(found_); }

  private:
    struct Level {
        bool mapping = false;
        bool keyNext = false;
    };

    // True when the node that begins now is a key.
    bool turn() {
        if (open_.empty() || !open_.back().mapping) return false;
        open_.back().keyNext = !open_.back().keyNext;
        return !open_.back().keyNext;
    }
    bool enter(bool mapping) {
        if (turn()) path_.member({});
        open_.push_back({mapping, mapping});
        return mapping ? path_.enterObject() : path_.enterArray();
    }
    void takeScalar(const Event& event) {
        if (turn()) {
            path_.member(event.scalar());
        } else if (path_.atScalar() && !isNull(event)) {
            found_.emplace_back(event.scalar());
        }
    }
    static bool isNull(const Event& event) {
        const std::string_view text = event.scalar();
        return event.isPlain() &&
               (text.empty() || text == "~" || text == "null" || text == "Null" || text == "NULL");
    }

    TreePath path_;
    std::vector<Level> open_;
    std::vector<std::string> found_;
};

}  // namespace

Values extractYaml(std::string_view text, std::string_view pointer) {
    Values values;
    Parser parser(text);
    Extraction extraction(pointer);
    while (true) {
        Event event;
        if (!parser.next(event.get()) || !extraction.take(event)) {
            values.malformed = true;
            return values;
        }
        if (event.type() == YAML_STREAM_END_EVENT) break;
    }
    values.found = extraction.takeFound();
    return values;
}

}  // namespace zuksw
