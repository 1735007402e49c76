#pragma once
// The best time of each piece of work in a benchmark run, in seconds, by name: what the
// ratios printed at the end are made from.
#include <chrono>
#include <map>
#include <string>

namespace tallora {

inline std::map<std::string, double>& seconds() {
    static std::map<std::string, double> s;
    return s;
}

// Times from its making to stop(), and keeps the time under its name when it is the best.
class Stopwatch {
public:
    explicit Stopwatch(const char* key) : key_(key) {}
    void stop() {
        const double s =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
        auto& all = seconds();
        const auto it = all.find(key_);
        if (it == all.end() || s < it->second) all[key_] = s;
    }

private:
    std::string key_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

}  // namespace tallora
