#include "platform/runtime.h"

#include <fcntl.h>

#include <memory>
#include <optional>

#include "platform/blocked_signals.h"
#include "platform/child.h"
#include "platform/command_line.h"
#include "platform/descriptor_stream.h"

namespace {

// A host may run with its standard streams closed. A descriptor that took such a free number moves up:
// the child's standard streams go there.
FileDescriptor aboveStandardStreams(int descriptor) {
    FileDescriptor low(descriptor);
    if (descriptor < 0 || descriptor > STDERR_FILENO) return low;
    return FileDescriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

struct Pipe {
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

// With ends that are not valid when it fails.
Pipe openPipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return {};
    Pipe pipe;
    pipe.readEnd = aboveStandardStreams(ends[0]);
    pipe.writeEnd = aboveStandardStreams(ends[1]);
    return pipe;
}

sigset_t childSignal() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGCHLD);
    return set;
}

class ChildProcess final : public Process {
  public:
    explicit ChildProcess(FileDescriptor output) : output_(std::move(output)) {}
    ~ChildProcess() override {
        // A child that still writes must not wait for us to read while we wait for its end.
        output_.close();
        if (started_) exitStatus();
    }

    bool start(const std::vector<std::string>& words, const char* environment, int input, int output) {
        // A handler that waits for every child would cost the status for good.
        if (!keepsExitStatus()) reapersKeptOut_.emplace(childSignal());
        started_ = startChild(words, environment, input, output, &child_);
        return started_;
    }

    int exitStatus() override {
        if (!status_) {
            status_ = waitForEnd(child_);
            reapersKeptOut_.reset();
        }
        return *status_;
    }
    int resultValue() override { return exitStatus(); }
    Stream* standardOutput() override { return &output_; }

  private:
    DescriptorStream output_;
    Child child_;
    bool started_ = false;
    std::optional<int> status_;
    std::optional<BlockedSignals> reapersKeptOut_;
};

}  // namespace

Stream::~Stream() = default;
Process::~Process() = default;
Runtime::Runtime() = default;
Runtime::~Runtime() = default;

Process* Runtime::execute(const String& command, const char* environment) {
    Pipe output = openPipe();
    const FileDescriptor input = aboveStandardStreams(open("/dev/null", O_RDONLY | O_CLOEXEC));
    if (!output.readEnd.valid() || !output.writeEnd.valid() || !input.valid()) return nullptr;

    auto process = std::make_unique<ChildProcess>(std::move(output.readEnd));
    const bool started =
        process->start(splitCommandLine(command.text), environment, input.get(), output.writeEnd.get());
    return started ? process.release() : nullptr;
}
