// CSV import and export of a notepad list at N and 4N rows (N = 25,000 unless
// MORVANE_BENCH_N says otherwise). The lists are made from the fixed-frequency
// entries of the example list, cycled with fresh IDs. Measured on the same
// files in the same run:
//
//   CsvScan      the file read line by line through a UTF-8 QTextStream and
//                each line split at ";": what any reader of the file does,
//                the baseline
//   ExportCsv    FileHandling::ExportFrequencyStoreList(true, ..., NotePad)
//   ImportCsv    FileHandling::ImportCSV(..., NotePad) into an empty list
//
// Each is measured five times and the fastest counts. At the end a table
// gives per path its time at N and 4N, the ratio to the scan, the growth
// t(4N)/t(N) and the rows per second at 4N. Every import is
// compared with the list the file was written from, outside the timing.

#include <morvane.h>

#include <benchmark/benchmark.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>

using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::FrequencyStoreListHelper;

namespace {

constexpr FrequencyStoreListHelper::ListType kNotePad = FrequencyStoreListHelper::ListType_NotePad;

int rowsFromEnvironment()
{
    const char *text = std::getenv("MORVANE_BENCH_N");
    const int value = text && *text ? std::atoi(text) : 25000;
    if (value < 1) {
        std::fprintf(stderr, "bench_csv: MORVANE_BENCH_N must be a positive number\n");
        std::exit(2);
    }
    return value;
}

struct Dataset
{
    int rows = 0;
    QString file;       // written once from list, read by the scan and the import
    QString exportFile; // where the export writes
    FrequencyStoreList list;
};

// What a notepad row keeps of an entry: type, comment, frequency and IF
// bandwidth to 2 decimals, analog demodulator.
FrequencyStoreEntry notepadEntry(const FrequencyStoreEntry &source, int row)
{
    const Morvane::FFM_Settings &ffm = source.GetFFM_Settings();
    FrequencyStoreEntry entry;
    entry.SetType(source.GetType());
    entry.SetComment(QStringLiteral("row %1").arg(row));
    Morvane::FFM_Settings &settings = entry.GetFFM_Settings();
    Morvane::Frequency frequency;
    frequency.SetValue(QString::number(ffm.GetFrequency().GetValue(), 'f', 2).toDouble());
    settings.SetFrequency(frequency);
    Morvane::IFBandwidth bandwidth;
    bandwidth.SetValue(QString::number(ffm.GetIFBandwidth().GetValue(), 'f', 2).toDouble());
    settings.SetIFBandwidth(bandwidth);
    if (ffm.IsAnalogDemodSet())
        settings.SetAnalogDemod(ffm.GetAnalogDemod());
    return entry;
}

std::unique_ptr<Dataset> makeDataset(int rows, const QString &dir)
{
    FrequencyStoreList example;
    if (!example.LoadXml(QStringLiteral(MORVANE_EXAMPLE_LIST))) {
        std::fprintf(stderr, "bench_csv: cannot load %s\n", MORVANE_EXAMPLE_LIST);
        std::exit(2);
    }
    QVector<FrequencyStoreEntry> fixed;
    for (const FrequencyStoreEntry &entry : example.GetFrequencyStoreEntry()) {
        if (entry.GetChoiceFrequencyStoreEntry() == FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings)
            fixed.append(entry);
    }
    auto set = std::make_unique<Dataset>();
    set->rows = rows;
    set->file = dir + QStringLiteral("/notepad-%1.csv").arg(rows);
    set->exportFile = dir + QStringLiteral("/notepad-%1-exported.csv").arg(rows);
    for (int i = 0; i < rows; ++i)
        set->list.AppendFrequencyStoreEntry(notepadEntry(fixed.at(i % fixed.size()), i));
    FileHandling files;
    if (!files.ExportFrequencyStoreList(true, set->file, set->list, kNotePad)) {
        std::fprintf(stderr, "bench_csv: cannot write %s\n", qPrintable(set->file));
        std::exit(2);
    }
    std::printf("notepad of %d rows: %.2f MB\n", rows, QFile(set->file).size() / (1024.0 * 1024.0));
    return set;
}

void CsvScan(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        QFile file(set.file);
        file.open(QIODevice::ReadOnly | QIODevice::Text);
        QTextStream stream(&file);
        Morvane::Compat::setUtf8(stream);
        qint64 fields = 0;
        while (!stream.atEnd())
            fields += stream.readLine().split(QLatin1Char(';')).size();
        benchmark::DoNotOptimize(fields);
    }
}

void ExportCsv(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        FileHandling files;
        if (!files.ExportFrequencyStoreList(true, set.exportFile, const_cast<FrequencyStoreList &>(set.list),
                                            kNotePad)) {
            state.SkipWithError("the export failed");
            break;
        }
    }
}

void ImportCsv(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        FrequencyStoreList list;
        FileHandling files;
        const bool ok = files.ImportCSV(set.file, list, kNotePad);
        state.PauseTiming();
        const bool same = ok && list == set.list;
        list = FrequencyStoreList();
        state.ResumeTiming();
        if (!same) {
            state.SkipWithError("the import gave another list");
            break;
        }
    }
}

class TableReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (run.error_occurred || run.run_type != Run::RT_Iteration)
                continue;
            // The fastest of the repetitions: on a shared machine the others
            // only add what other programs took.
            const std::string name = run.run_name.function_name;
            const double time = run.GetAdjustedCPUTime(); // in the unit: ms
            const auto it = milliseconds.find(name);
            if (it == milliseconds.end() || time < it->second)
                milliseconds[name] = time;
        }
    }
    std::map<std::string, double> milliseconds; // CPU time per operation
};

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    const int n = rowsFromEnvironment();
    QTemporaryDir dir;
    if (!dir.isValid())
        return 2;
    std::unique_ptr<Dataset> small = makeDataset(n, dir.path());
    std::unique_ptr<Dataset> large = makeDataset(4 * n, dir.path());
    const std::pair<const char *, void (*)(benchmark::State &, const Dataset &)> paths[] = {
        {"CsvScan", CsvScan}, {"ExportCsv", ExportCsv}, {"ImportCsv", ImportCsv}};
    for (const Dataset *set : {small.get(), large.get()}) {
        for (const auto &path : paths) {
            benchmark::RegisterBenchmark((std::string(path.first) + "/" + std::to_string(set->rows)).c_str(),
                                         path.second, *set)
                ->Unit(benchmark::kMillisecond)
                ->Iterations(1)
                ->Repetitions(5);
        }
    }
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nnotepad CSV, CPU time per operation in ms, its ratio to the scan, the growth t(%d)/t(%d) "
                "(4.00 is linear) and the rows per second at %d:\n",
                4 * n, n, 4 * n);
    std::printf("%-10s %12s %12s %10s %10s %8s %12s\n", "path", "ms@N", "ms@4N", "/scan@N", "/scan@4N", "growth",
                "rows/s@4N");
    const auto time = [&](const char *path, int rows) {
        const auto it = reporter.milliseconds.find(std::string(path) + "/" + std::to_string(rows));
        return it == reporter.milliseconds.end() ? 0.0 : it->second;
    };
    bool complete = true;
    for (const auto &path : paths) {
        const double atN = time(path.first, n);
        const double at4N = time(path.first, 4 * n);
        const double scanN = time("CsvScan", n);
        const double scan4N = time("CsvScan", 4 * n);
        if (atN <= 0 || at4N <= 0 || scanN <= 0 || scan4N <= 0) {
            std::printf("%-10s failed or left out\n", path.first);
            complete = false;
            continue;
        }
        std::printf("%-10s %12.2f %12.2f %10.2f %10.2f %8.2f %12.0f\n", path.first, atN, at4N, atN / scanN,
                    at4N / scan4N, at4N / atN, 4.0 * n / (at4N / 1e3));
    }
    return complete ? 0 : 1;
}
