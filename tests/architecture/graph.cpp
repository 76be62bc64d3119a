#include "architecture/graph.h"

#include <algorithm>
#include <deque>

namespace architecture {

namespace {

// Strongly connected components, after Tarjan.
class Components {
public:
    explicit Components(const Graph &graph) : graph_(graph)
    {
        for (const auto &[node, targets] : graph)
            if (!index_.contains(node))
                visit(node);
    }

    std::vector<std::set<std::string>> found;

private:
    void visit(const std::string &node)
    {
        int own = lowest_[node] = index_[node] = static_cast<int>(index_.size());
        waiting_.push_back(node);
        if (auto targets = graph_.find(node); targets != graph_.end())
            for (const std::string &target : targets->second)
                follow(node, target);
        if (lowest_[node] != own)
            return;
        std::set<std::string> component;
        while (!component.contains(node)) {
            component.insert(waiting_.back());
            waiting_.pop_back();
        }
        found.push_back(component);
    }

    void follow(const std::string &node, const std::string &target)
    {
        if (!index_.contains(target)) {
            visit(target);
            lowest_[node] = std::min(lowest_[node], lowest_[target]);
        } else if (std::find(waiting_.begin(), waiting_.end(), target) != waiting_.end()) {
            lowest_[node] = std::min(lowest_[node], index_[target]);
        }
    }

    const Graph &graph_;
    std::map<std::string, int> index_, lowest_;
    std::vector<std::string> waiting_;
};

// The shortest way from a node back to it, by nodes of its component.
std::vector<std::string> shortestCircle(const Graph &graph, const std::set<std::string> &component,
                                        const std::string &start)
{
    std::map<std::string, std::string> from;
    std::deque<std::string> next{start};
    while (!next.empty()) {
        std::string node = next.front();
        next.pop_front();
        for (const std::string &target : graph.at(node)) {
            if (target == node || !component.contains(target) || from.contains(target))
                continue;
            from[target] = node;
            if (target != start) {
                next.push_back(target);
                continue;
            }
            std::vector<std::string> path{start};
            for (std::string at = node; at != start; at = from.at(at))
                path.push_back(at);
            path.push_back(start);
            std::reverse(path.begin(), path.end());
            return path;
        }
    }
    return {};
}

}  // namespace

std::vector<std::vector<std::string>> circles(const Graph &graph)
{
    std::vector<std::vector<std::string>> found;
    for (const std::set<std::string> &component : Components(graph).found) {
        if (component.size() < 2)
            continue;
        std::vector<std::string> best;
        for (const std::string &node : component)
            if (std::vector<std::string> path = shortestCircle(graph, component, node);
                best.empty() || path.size() < best.size())
                best = path;
        found.push_back(best);
    }
    return found;
}

}  // namespace architecture
