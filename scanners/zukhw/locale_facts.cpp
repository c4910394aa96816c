#include "scanners/zukhw/locale_facts.h"

#include <langinfo.h>
#include <locale.h>
#include <clocale>

#include <cstdint>

namespace {

class Locale {
  public:
    // A name with a slash would be taken for the path of any file.
    Locale(const std::string& name, int category)
        : locale_(name.find('/') == std::string::npos && !name.empty()
                      ? ::newlocale(category, name.c_str(), nullptr)
                      : nullptr) {}
    ~Locale() {
        if (known()) ::freelocale(locale_);
    }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

    bool known() const { return locale_ != nullptr; }
    // Facts that are one byte, and facts that are a number where others have the address of their text.
    int byte(nl_item item) const { return static_cast<unsigned char>(*::nl_langinfo_l(item, locale_)); }
    int number(nl_item item) const {
        return static_cast<int>(reinterpret_cast<std::intptr_t>(::nl_langinfo_l(item, locale_)));
    }

  private:
    locale_t locale_;
};

}  // namespace

std::string firstDayOfWeek(const std::string& name) {
    static constexpr const char* kDays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                            "Thursday", "Friday", "Saturday"};
    constexpr int kWeek = 7;
    constexpr int kBeginsOnMonday = 19971201;  // as a date; others have the Sunday before
    const Locale locale(name, LC_TIME_MASK);
    if (!locale.known()) return "";
    const int shift = locale.number(_NL_TIME_WEEK_1STDAY) == kBeginsOnMonday ? 1 : 0;
    const int first = locale.byte(_NL_TIME_FIRST_WEEKDAY);  // from 1
    return first >= 1 && first <= kWeek ? kDays[(first - 1 + shift) % kWeek] : "";
}

std::string measurementSystem(const std::string& name) {
    const Locale locale(name, LC_MEASUREMENT_MASK);
    if (!locale.known()) return "";
    const int system = locale.byte(_NL_MEASUREMENT_MEASUREMENT);
    if (system == 1) return "Metric";
    return system == 2 ? "US" : "";
}

std::string paperSize(const std::string& name) {
    const Locale locale(name, LC_PAPER_MASK);
    if (!locale.known()) return "";
    const int width = locale.number(_NL_PAPER_WIDTH);
    const int height = locale.number(_NL_PAPER_HEIGHT);
    if (width == 210 && height == 297) return "A4";
    if (width == 216 && height == 279) return "Letter";
    return width > 0 && height > 0 ? std::to_string(width) + 'x' + std::to_string(height) : "";
}
