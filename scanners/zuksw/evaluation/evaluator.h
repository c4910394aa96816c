#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <vector>

#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/outcome.h"

namespace zuksw {

/** Evaluates signatures on several threads: wave by wave, so that what one refers to is there, and inside a
 * wave signature by signature; the rows of one signature are spread too, since one may have most of the work.
 */
class Evaluator {
  public:
    Evaluator(Machine* machine, Outcomes* outcomes) : machine_(*machine), outcomes_(*outcomes) {}

    void run(unsigned threads);

  private:
    // Rows of a signature that the steps of Detect from `step` on are still to be applied to.
    struct Task {
        std::size_t signature;
        std::size_t step;
        Rows rows;
    };
    // What came of the tasks of a signature so far.
    struct Progress {
        Rows rows;
        std::size_t open = 0;  // tasks
    };

    void runWave(const std::vector<std::size_t>& wave, unsigned threads);
    void work();
    bool takeTask(Task* task);
    bool takeSignatures(std::vector<std::size_t>* signatures);
    void begin(std::size_t signature);
    void perform(Task task);
    void split(const Task& task, Rows rows, std::size_t step);
    void finish(std::size_t signature, Rows rows);
    const Signature& signatureOf(std::size_t index) const {
        return outcomes_.signatures().signatures()[index];
    }
    Row firstRow(const Signature& signature) const;

    Machine& machine_;
    Outcomes& outcomes_;

    std::mutex mutex_;
    std::condition_variable changed_;
    const std::vector<std::size_t>* wave_ = nullptr;
    std::size_t next_ = 0;            // in *wave_
    std::size_t share_ = 1;           // signatures that a thread takes at a time
    std::size_t busy_ = 0;            // threads that may still split off tasks
    std::vector<Task> tasks_;         // split off
    std::vector<Progress> progress_;  // by signature
};

}  // namespace zuksw
