#include "scanners/zuksw/language/reference_graph.h"

#include <algorithm>
#include <limits>

namespace zuksw {
namespace {

constexpr std::size_t kUnseen = std::numeric_limits<std::size_t>::max();

// Tarjan's strongly connected components with its own stack.
class CycleFinder {
  public:
    explicit CycleFinder(const ReferenceGraph& graph)
        : graph_(graph),
          number_(graph.size(), kUnseen),
          low_(graph.size()),
          open_(graph.size()),
          onCycle_(graph.size()) {}

    std::vector<bool> run() {
        for (std::size_t node = 0; node < graph_.size(); ++node) {
            if (number_[node] == kUnseen) visit(node);
        }
        return std::move(onCycle_);
    }

  private:
    struct Frame {
        std::size_t node;
        std::size_t next;  // which reference to follow next
    };

    void enter(std::size_t node) {
        number_[node] = low_[node] = counter_++;
        open_[node] = true;
        path_.push_back(node);
        frames_.push_back({node, 0});
    }

    void visit(std::size_t start) {
        enter(start);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            const std::size_t node = frame.node;
            if (frame.next < graph_[node].size()) {
                const std::size_t target = graph_[node][frame.next++];
                if (target == node) onCycle_[node] = true;
                if (number_[target] == kUnseen) {
                    enter(target);
                } else if (open_[target]) {
                    low_[node] = std::min(low_[node], number_[target]);
                }
                continue;
            }
            leave(node);
        }
    }

    void leave(std::size_t node) {
        frames_.pop_back();
        if (!frames_.empty()) {
            std::size_t& low = low_[frames_.back().node];
            low = std::min(low, low_[node]);
        }
        if (low_[node] != number_[node]) return;
        const bool alone = path_.back() == node;
        while (true) {
            const std::size_t member = path_.back();
            path_.pop_back();
            open_[member] = false;
            if (!alone) onCycle_[member] = true;
            if (member == node) return;
        }
    }

    const ReferenceGraph& graph_;
    std::vector<std::size_t> number_;
    std::vector<std::size_t> low_;
    std::vector<bool> open_;
    std::vector<bool> onCycle_;
    std::vector<std::size_t> path_;
    std::vector<Frame> frames_;
    std::size_t counter_ = 0;
};

}  // namespace

std::vector<bool> nodesOnCycles(const ReferenceGraph& graph) {
    return CycleFinder(graph).run();
}

std::vector<std::vector<std::size_t>> arrangeInWaves(const ReferenceGraph& graph) {
    std::vector<std::size_t> missing(graph.size());
    ReferenceGraph users(graph.size());
    std::vector<std::size_t> wave;
    for (std::size_t node = 0; node < graph.size(); ++node) {
        missing[node] = graph[node].size();
        for (const std::size_t target : graph[node]) users[target].push_back(node);
        if (missing[node] == 0) wave.push_back(node);
    }
    std::vector<std::vector<std::size_t>> waves;
    while (!wave.empty()) {
        std::vector<std::size_t> next;
        for (const std::size_t node : wave) {
            for (const std::size_t user : users[node]) {
                if (--missing[user] == 0) next.push_back(user);
            }
        }
        std::sort(next.begin(), next.end());
        waves.push_back(std::move(wave));
        wave = std::move(next);
    }
    return waves;
}

}  // namespace zuksw
