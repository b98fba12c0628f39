// What every benchmark prints: the median and 99th percentile of a series of
// per-frame times, and the time since the process started (for the time to
// the first presented frame).
//
// Depends on: the kernel's /proc records. Limits: Linux only.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

struct Figures {
    double median, p99;
};

inline Figures Summarise(std::vector<double> ms) {
    if (ms.empty()) return {0.0, 0.0};
    std::sort(ms.begin(), ms.end());
    return {ms[ms.size() / 2], ms[(size_t)((double)ms.size() * 0.99)]};
}

// Seconds since this process started, from the kernel's own record.
inline double SecondsSinceProcessStart() {
    std::ifstream stat("/proc/self/stat"), uptime("/proc/uptime");
    std::string field;
    for (int i = 0; i < 22 && stat >> field; ++i) {
    }
    double up = 0;
    uptime >> up;
    return up - std::stod(field) / (double)sysconf(_SC_CLK_TCK);
}
