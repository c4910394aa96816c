#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "scanners/zuksw/evaluation/context.h"
#include "scanners/zuksw/evaluation/outcome.h"

namespace zuksw {

/** Evaluates signatures on several threads: wave by wave, so that what one refers to is there, and inside a
 *  wave signature by signature. The rows of one signature are spread too, since one may have most of the
 * work; they take each step of Detect together, so that their number is known, and limited, after each. */
class Evaluator {
  public:
    Evaluator(Machine* machine, Outcomes* outcomes) : machine_(*machine), outcomes_(*outcomes) {}

    void run(unsigned threads);

  private:
    // Some rows of a signature, to which a step of Detect is to be applied.
    struct Task {
        std::size_t signature;
        std::size_t step;
        std::size_t part;
        Rows rows;
    };
    // A signature that is being evaluated, and what became of the parts in its present step.
    struct Progress {
        const Signature* signature = nullptr;
        std::unique_ptr<const Signature> readAgain;
        std::vector<Rows> parts;
        std::size_t open = 0;
    };

    void runWave(const std::vector<std::size_t>& wave, unsigned threads);
    void work();
    bool takeTask(Task* task);
    bool takeSignatures(std::vector<std::size_t>* signatures);
    void begin(std::size_t signature);
    bool isSurelyFalse(const ListedSignature& listed);
    void perform(std::optional<Task> task);
    std::optional<Task> divide(std::size_t signature, std::size_t step, Rows rows);
    std::optional<Task> join(const Task& task, Rows rows);
    void finish(std::size_t signature, const Rows& rows);
    const Signature& signatureOf(std::size_t index) const { return *progress_[index]->signature; }
    Row firstRow(const Signature& signature) const;

    Machine& machine_;
    Outcomes& outcomes_;

    std::mutex mutex_;
    std::condition_variable changed_;
    const std::vector<std::size_t>* wave_ = nullptr;
    std::size_t next_ = 0;                             // in *wave_
    std::size_t share_ = 1;                            // signatures that a thread takes at a time
    std::size_t busy_ = 0;                             // threads that may still make tasks
    std::vector<Task> tasks_;                          // parts that nobody has taken yet
    std::vector<std::unique_ptr<Progress>> progress_;  // by signature; null before and after
};

}  // namespace zuksw
