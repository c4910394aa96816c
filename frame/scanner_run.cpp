#include "frame/scanner_run.h"

#include <memory>

#include "frame/environment_block.h"
#include "frame/standard_output.h"
#include "frame/trace.h"
#include "platform/runtime.h"

int runScanner(const std::wstring& command, const std::wstring& homeDir, ZUKlog* log, const char* location,
               int& returnCode) {
    const std::string environment = buildEnvironment(homeDir);
    Runtime runtime;
    const std::unique_ptr<Process> process(runtime.execute(String(command.c_str()), environment.data()));
    if (!process) {
        traceMIN(log, location, "Execution of command failed..");
        returnCode = -1;
        return kScannerNotStarted;
    }

    logStandardOutput(*process->standardOutput(), log, location);
    returnCode = process->resultValue();
    const int status = process->exitStatus();
    if (status != 0) {
        traceMIN(log, location, "Exit code: %d (ERROR)", status);
    } else {
        traceMAX(log, location, "Exit code: %d (OK)", status);
    }
    return status;
}
