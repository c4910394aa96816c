#include "scanners/zuksw/evaluation/evaluator.h"

#include <algorithm>
#include <iterator>
#include <thread>
#include <utility>

#include "scanners/zuksw/evaluation/result_maker.h"

namespace zuksw {
namespace {

constexpr std::size_t kMinRowsToSplit = 2;
constexpr std::size_t kMaxShare = 64;

}  // namespace

void Evaluator::run(unsigned threads) {
    progress_.resize(outcomes_.signatures().signatures().size());
    for (const std::vector<std::size_t>& wave : outcomes_.signatures().waves()) runWave(wave, threads);
}

void Evaluator::runWave(const std::vector<std::size_t>& wave, unsigned threads) {
    wave_ = &wave;
    next_ = 0;
    share_ = std::clamp<std::size_t>(wave.size() / (threads * std::size_t{8}), 1, kMaxShare);
    std::vector<std::thread> others;
    for (unsigned i = 1; i < threads; ++i) others.emplace_back([this] { work(); });
    work();
    for (std::thread& other : others) other.join();
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
    const Signature& signature = signatureOf(index);
    if (!signature.valid) return;
    progress_[index].open = 1;
    Task task = {index, 0, {}};
    task.rows.push_back(firstRow(signature));
    perform(std::move(task));
}

Row Evaluator::firstRow(const Signature& signature) const {
    Row row(signature.slots);
    for (const Input& input : signature.inputs) {
        if (input.value) row.bind(input.slot, *input.value);
    }
    return row;
}

void Evaluator::perform(Task task) {
    const Signature& signature = signatureOf(task.signature);
    const Context context{machine_, signature.guid};
    const All& detect = *signature.detect;
    if (detect.isPlain()) {
        for (std::size_t step = task.step; step < detect.steps() && !task.rows.empty(); ++step) {
            if (step > task.step && task.rows.size() >= kMinRowsToSplit) {
                return split(task, std::move(task.rows), step);
            }
            Rows next;
            detect.step(step, task.rows, context, &next);
            context.limitRows(&next);
            task.rows = std::move(next);
        }
    } else {
        Rows rows;
        detect.apply(task.rows.front(), context, &rows);
        task.rows = std::move(rows);
    }
    finish(task.signature, std::move(task.rows));
}

// Each half of the rows goes its own way through the remaining steps.
void Evaluator::split(const Task& task, Rows rows, std::size_t step) {
    const auto half = static_cast<std::ptrdiff_t>(rows.size() / 2);
    Rows second(std::make_move_iterator(rows.begin() + half), std::make_move_iterator(rows.end()));
    rows.erase(rows.begin() + half, rows.end());
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        ++progress_[task.signature].open;
        tasks_.push_back({task.signature, step, std::move(second)});
        changed_.notify_one();
    }
    perform({task.signature, step, std::move(rows)});
}

void Evaluator::finish(std::size_t index, Rows rows) {
    Rows all;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        Progress& progress = progress_[index];
        std::move(rows.begin(), rows.end(), std::back_inserter(progress.rows));
        if (--progress.open > 0) return;
        all = std::move(progress.rows);
    }
    const Signature& signature = signatureOf(index);
    const Context context{machine_, signature.guid};
    outcomes_.of(index) = makeOutcome(signature, all, context);
}

}  // namespace zuksw
