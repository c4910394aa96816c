#include "scanners/zuksw/evaluation/evaluator.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "scanners/zuksw/evaluation/result_maker.h"
#include "scanners/zuksw/setup/threads.h"

namespace zuksw {
namespace {

// Into how many parts rows are divided. Not by the number of threads, so that nothing depends on that.
constexpr std::size_t kParts = 16;
constexpr std::size_t kMaxShare = 64;  // signatures that a thread takes at a time

}  // namespace

void Evaluator::run(unsigned threads) {
    progress_.resize(outcomes_.signatures().signatures().size());
    for (const std::vector<std::size_t>& wave : outcomes_.signatures().waves()) runWave(wave, threads);
}

void Evaluator::runWave(const std::vector<std::size_t>& wave, unsigned threads) {
    wave_ = &wave;
    next_ = 0;
    share_ = std::clamp<std::size_t>(wave.size() / (threads * std::size_t{8}), 1, kMaxShare);
    runOnThreads(threads, [this] { work(); });
}

// Both are called with the lock held.
bool Evaluator::takeTask(Task* task) {
    if (tasks_.empty()) return false;
    *task = std::move(tasks_.back());
    tasks_.pop_back();
    return true;
}

bool Evaluator::takeSignatures(std::vector<std::size_t>* signatures) {
    const std::size_t count = std::min(share_, wave_->size() - next_);
    const auto begin = wave_->begin() + static_cast<std::ptrdiff_t>(next_);
    signatures->assign(begin, begin + static_cast<std::ptrdiff_t>(count));
    next_ += count;
    return count > 0;
}

void Evaluator::work() {
    std::unique_lock<std::mutex> lock(mutex_);
    Task task = {};
    std::vector<std::size_t> signatures;
    while (true) {
        const bool isTask = takeTask(&task);
        if (!isTask && !takeSignatures(&signatures)) {
            if (busy_ == 0) return;
            changed_.wait(lock);
            continue;
        }
        ++busy_;
        lock.unlock();
        if (isTask) {
            perform(std::move(task));
        } else {
            for (const std::size_t signature : signatures) begin(signature);
        }
        lock.lock();
        --busy_;
        if (busy_ == 0) changed_.notify_all();
    }
}

void Evaluator::begin(std::size_t index) {
    const ListedSignature& listed = outcomes_.signatures().signatures()[index];
    if (isSurelyFalse(listed)) return;
    progress_[index] = std::make_unique<Progress>();
    Progress& progress = *progress_[index];
    if (!listed.signature) progress.readAgain = outcomes_.signatures().readAgain(index);
    progress.signature = listed.signature ? listed.signature.get() : progress.readAgain.get();
    const Signature& signature = *progress.signature;
    Rows rows = {firstRow(signature)};
    if (signature.detect->isPlain()) return perform(divide(index, 0, std::move(rows)));
    const Context context{machine_, signature.guid};
    Rows found;
    signature.detect->apply(rows.front(), context, &found);
    finish(index, found);
}

// An invalid one does not run; most others of very many look for a file that is not there.
bool Evaluator::isSurelyFalse(const ListedSignature& listed) {
    return !listed.valid || (listed.query && machine_.files.foundNothing(*listed.query));
}

Row Evaluator::firstRow(const Signature& signature) const {
    Row row(signature.slots);
    for (const Input& input : signature.inputs) {
        if (input.value) row.bind(input.slot, *input.value);
    }
    return row;
}

// One part of the rows takes one step. Whoever is the last of its step to do so goes on with the next.
void Evaluator::perform(std::optional<Task> task) {
    while (task) {
        const Signature& signature = signatureOf(task->signature);
        const Context context{machine_, signature.guid};
        Rows rows;
        signature.detect->step(task->step, task->rows, context, &rows);
        task = join(*task, std::move(rows));
    }
}

// Shares rows out; the first part is the caller's.
std::optional<Evaluator::Task> Evaluator::divide(std::size_t signature, std::size_t step, Rows rows) {
    const std::size_t parts = std::clamp<std::size_t>(rows.size(), 1, kParts);
    Progress& progress = *progress_[signature];
    progress.parts.assign(parts, {});
    progress.open = parts;
    if (parts == 1) return Task{signature, step, 0, std::move(rows)};
    const auto partOf = [&rows, parts, signature, step](std::size_t part) {
        const auto edge = [&rows, parts](std::size_t i) {
            return std::make_move_iterator(rows.begin() +
                                           static_cast<std::ptrdiff_t>(rows.size() * i / parts));
        };
        return Task{signature, step, part, Rows(edge(part), edge(part + 1))};
    };
    const std::lock_guard<std::mutex> lock(mutex_);
    for (std::size_t part = 1; part < parts; ++part) tasks_.push_back(partOf(part));
    changed_.notify_all();
    return partOf(0);
}

// Takes in what one part became; the task to go on with, if there is one for the caller.
std::optional<Evaluator::Task> Evaluator::join(const Task& task, Rows rows) {
    Progress& progress = *progress_[task.signature];
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        progress.parts[task.part] = std::move(rows);
        if (--progress.open > 0) return std::nullopt;
    }
    Rows all;
    for (Rows& part : progress.parts) std::move(part.begin(), part.end(), std::back_inserter(all));
    progress.parts = {};
    const Signature& signature = signatureOf(task.signature);
    const Context context{machine_, signature.guid};
    signature.detect->limitRows(firstRow(signature), context, &all);
    const bool more = !all.empty() && task.step + 1 < signature.detect->steps();
    if (more && !context.timeIsUp(&all)) {
        return divide(task.signature, task.step + 1, std::move(all));
    }
    finish(task.signature, all);
    return std::nullopt;
}

void Evaluator::finish(std::size_t index, const Rows& rows) {
    const Signature& signature = signatureOf(index);
    outcomes_.of(index) = makeOutcome(signature, rows, {machine_, signature.guid});
    progress_[index].reset();
}

}  // namespace zuksw
