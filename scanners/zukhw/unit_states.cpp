#include "scanners/zukhw/unit_states.h"

#include <deque>

#include "scanners/shared/affix.h"
#include "scanners/zukhw/sd_bus.h"

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr char kManager[] = "org.freedesktop.systemd1";
constexpr char kManagerPath[] = "/org/freedesktop/systemd1";

// One connection, on which everything is asked without waiting: the library's own calls that wait do so for
// as long as a silent bus likes.
class UnitStateReader {
  public:
    UnitStateReader(const SdBus& library, microseconds limit)
        : library_(library), end_(Clock::now() + limit) {}
    ~UnitStateReader() {
        if (bus_ == nullptr) return;
        library_.close(bus_);
        library_.release(bus_);
    }
    UnitStateReader(const UnitStateReader&) = delete;
    UnitStateReader& operator=(const UnitStateReader&) = delete;

    UnitStates read(const std::string& address) {
        if (connect(address) && askForUnits()) answerAll();
        return std::move(states_);
    }

  private:
    struct PidQuestion {
        UnitStateReader* reader;
        std::string unit;
    };

    bool connect(const std::string& address) {
        return library_.create(&bus_) >= 0 && library_.setAddress(bus_, address.c_str()) >= 0 &&
               library_.setBusClient(bus_, 1) >= 0 && library_.start(bus_) >= 0;
    }

    // Nothing is started to answer. Further arguments are the method's, types first.
    template <typename... Arguments>
    bool ask(const char* object, const char* interface, const char* method, sd_bus_message_handler_t onAnswer,
             void* data, const char* types, const Arguments*... arguments) {
        sd_bus_message* call = nullptr;
        if (library_.newCall(bus_, &call, kManager, object, interface, method) < 0) return false;
        const bool asked = library_.setAutoStart(call, 0) >= 0 &&
                           library_.append(call, types, arguments...) >= 0 &&
                           library_.callAsync(bus_, nullptr, call, onAnswer, data, 0) >= 0;
        library_.releaseMessage(call);
        if (asked) ++pending_;
        return asked;
    }

    bool askForUnits() {
        return ask(kManagerPath, "org.freedesktop.systemd1.Manager", "ListUnits", onUnits, this, "");
    }

    void askForPid(const std::string& unit, const char* object) {
        questions_.push_back({this, unit});
        ask(object, "org.freedesktop.DBus.Properties", "Get", onPid, &questions_.back(), "ss",
            "org.freedesktop.systemd1.Service", "MainPID");
    }

    // Until everything that was asked is answered, or the time is up.
    void answerAll() {
        while (pending_ > 0) {
            const auto left = std::chrono::duration_cast<microseconds>(end_ - Clock::now());
            if (left.count() <= 0) return;
            const int processed = library_.process(bus_, nullptr);
            if (processed < 0) return;
            if (processed == 0 && library_.wait(bus_, static_cast<std::uint64_t>(left.count())) < 0) return;
        }
    }

    static int onUnits(sd_bus_message* answer, void* self, sd_bus_error*) {
        static_cast<UnitStateReader*>(self)->takeUnits(answer);
        return 0;
    }

    static int onPid(sd_bus_message* answer, void* question, sd_bus_error*) {
        const auto& asked = *static_cast<const PidQuestion*>(question);
        asked.reader->takePid(asked.unit, answer);
        return 0;
    }

    void takeUnits(sd_bus_message* answer) {
        --pending_;
        if (library_.isError(answer, nullptr) != 0) return;
        if (library_.enter(answer, 'a', "(ssssssouso)") < 0) return;
        const char *name = nullptr, *load = nullptr, *state = nullptr, *subState = nullptr, *object = nullptr;
        while (library_.read(answer, "(ssssssouso)", &name, nullptr, &load, &state, &subState, nullptr,
                             &object, nullptr, nullptr, nullptr) > 0) {
            if (!endsWith(name, ".service") || std::string_view(load) == "not-found") continue;
            states_[name] = {state, subState, std::nullopt};
            if (std::string_view(state) != "inactive" && std::string_view(state) != "failed")
                askForPid(name, object);
        }
    }

    void takePid(const std::string& unit, sd_bus_message* answer) {
        std::uint32_t pid = 0;
        --pending_;
        if (library_.isError(answer, nullptr) != 0 || library_.read(answer, "v", "u", &pid) < 0) return;
        if (pid != 0) states_[unit].mainPid = pid;
    }

    const SdBus& library_;
    Clock::time_point end_;
    sd_bus* bus_ = nullptr;
    std::size_t pending_ = 0;  // questions without an answer
    std::deque<PidQuestion> questions_;
    UnitStates states_;
};

}  // namespace

UnitStates readUnitStates(const std::string& address, std::chrono::milliseconds limit) {
    const SdBus library;
    return library.available() ? UnitStateReader(library, limit).read(address) : UnitStates();
}
