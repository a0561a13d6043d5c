#pragma once

#include "bench/Measure.h"

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

/// Prints the runs that count and judges them by the promises that their counters hold. The short runs before them, by
/// which the library finds out how often to repeat, are cold and come to no reporter.
class CPromiseReporter : public benchmark::ConsoleReporter
{
public:
    CPromiseReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred)
                m_broken.push_back(run.benchmark_name() + ": " + run.error_message);
            for (const auto& [name, promise] : run.counters) {
                if (name.starts_with(Measure::PromisePrefix))
                    Judge(run, name.substr(Measure::PromisePrefix.size()), promise);
            }
        }
    }

    /// Says by name what was not kept, and by how much; false if there is any.
    [[nodiscard]] bool ConcludeAllKept() const
    {
        for (const std::string& line : m_broken)
            std::cerr << "NOT KEPT  " << line << '\n';
        return m_broken.empty();
    }

private:
    void Judge(const Run& run, const std::string& figure, double promise)
    {
        const double measured = run.counters.at(figure);
        if (measured <= promise * Measure::NoiseAllowance)
            return;
        std::ostringstream line;
        line.precision(3);
        line << run.benchmark_name() << ": " << figure << " is " << measured << ", promised " << promise << " ("
             << measured / promise << " times as much, allowed " << Measure::NoiseAllowance << ")";
        m_broken.push_back(line.str());
    }

    std::vector<std::string> m_broken;
};
