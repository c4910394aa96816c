#include <nlohmann/json.hpp>

#include "scanners/zuksw/formats/extractors.h"
#include "scanners/zuksw/formats/tree_path.h"

namespace zuksw {

namespace {

using Json = nlohmann::json;

// Takes the parser's events; nothing is kept but the values wanted. Every false ends the reading.
class Extraction final : public Json::json_sax_t {
  public:
    explicit Extraction(std::string_view pointer) : path_(pointer) {}

    std::vector<std::string> takeFound() { return std::move(found_); }

    bool null() override {
        path_.atScalar();
        return true;
    }
    bool boolean(bool value) override { return scalar(value ? "true" : "false"); }
    bool number_integer(Json::number_integer_t value) override { return scalar(std::to_string(value)); }
    bool number_unsigned(Json::number_unsigned_t value) override { return scalar(std::to_string(value)); }
    bool number_float(Json::number_float_t /*value*/, const std::string& written) override {
        return scalar(written);
    }
    bool string(std::string& value) override { return scalar(value); }
    bool binary(Json::binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*size*/) override { return path_.enterObject(); }
    bool start_array(std::size_t /*size*/) override { return path_.enterArray(); }
    bool key(std::string& name) override {
        path_.member(name);
        return true;
    }
    bool end_object() override { return leave(); }
    bool end_array() override { return leave(); }
    bool parse_error(std::size_t /*at*/, const std::string& /*token*/,
                     const Json::exception& /*error*/) override {
        return false;
    }

  private:
    bool scalar(const std::string& value) {
        if (path_.atScalar()) found_.push_back(value);
        return true;
    }
    bool leave() {
        path_.leave();
        return true;
    }

    TreePath path_;
    std::vector<std::string> found_;
};

}  // namespace

Values extractJson(std::string_view text, std::string_view pointer) {
    Extraction extraction(pointer);
    Values values;
    values.malformed = !Json::sax_parse(text.begin(), text.end(), &extraction);
    values.found = extraction.takeFound();
    return values;
}

}  // namespace zuksw
