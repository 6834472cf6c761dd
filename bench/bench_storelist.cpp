// Reading and copying a store list. Each measurement is printed together with
// its ratio to a baseline measured in the same run:
// - reading the binary form, against reading the XML form of the same list;
// - a shared copy (operator=), against a copy that is made private at once.

#include <morvane.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFile>

#include <cstdio>
#include <map>
#include <string>

using Morvane::FrequencyStoreList;

namespace {

const FrequencyStoreList &example()
{
    static const FrequencyStoreList list = [] {
        FrequencyStoreList l;
        if (!l.LoadXml(QStringLiteral(MORVANE_EXAMPLE_LIST)))
            std::abort();
        return l;
    }();
    return list;
}

void ReadXml(benchmark::State &state)
{
    const QString xml = example().GetXmlString();
    for (auto _ : state) {
        FrequencyStoreList list;
        benchmark::DoNotOptimize(list.SetXmlString(xml));
    }
}

void ReadBinary(benchmark::State &state)
{
    const QByteArray binary = example().GetBinaryRepresentationAsQByteArray();
    for (auto _ : state) {
        FrequencyStoreList list;
        QByteArray bytes = binary;
        benchmark::DoNotOptimize(list.SetBinaryRepresentation(bytes));
    }
}

void PrivateCopy(benchmark::State &state)
{
    for (auto _ : state) {
        FrequencyStoreList copy(example());
        benchmark::DoNotOptimize(copy.IsInitialized());
    }
}

void SharedCopy(benchmark::State &state)
{
    for (auto _ : state) {
        FrequencyStoreList copy;
        copy = example();
        benchmark::DoNotOptimize(&copy);
    }
}

BENCHMARK(ReadXml);
BENCHMARK(ReadBinary);
BENCHMARK(PrivateCopy);
BENCHMARK(SharedCopy);

// Keeps the time per iteration of each run, to print the ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs)
            times[run.benchmark_name()] = run.GetAdjustedRealTime();
    }
    std::map<std::string, double> times;
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const auto ratio = [&](const char *measured, const char *baseline) {
        if (reporter.times.count(measured) && reporter.times.count(baseline) && reporter.times[baseline] > 0)
            std::printf("%s / %s = %.3f\n", measured, baseline, reporter.times[measured] / reporter.times[baseline]);
    };
    ratio("ReadBinary", "ReadXml");
    ratio("SharedCopy", "PrivateCopy");
    return 0;
}
