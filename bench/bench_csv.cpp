// The CSV list files at N and 4N rows (N = 25,000 unless MORVANE_BENCH_N says
// otherwise): a notepad and a memory scan list, made from the fixed-frequency
// entries of the example list, cycled, and a detection result list of N and
// 4N results converted into store entries and written as the detection result
// CSV file. Measured on the same files in the same run:
//
//   CsvScan      the file read line by line through a UTF-8 QTextStream and
//                each line split at ";": what any reader of the file does,
//                the baseline of its kind
//   ExportCsv    FileHandling::ExportFrequencyStoreList(true, ..., type)
//   ImportCsv    FileHandling::ImportCSV(..., type) into an empty list
//   Convert      FileHandling::ExportFrequencyStoreList(true, ..., results):
//                the conversion of the results and the CSV file written
//
// Each is measured five times and the fastest counts. At the end a table
// gives per kind and path its time at N and 4N, the ratio to the scan, the
// growth t(4N)/t(N) and the rows per second at 4N. Every import is checked
// outside the timing: the notepad against the list the file was written
// from, the memory scan by exporting what was read, which must give the file
// again.

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
#include <utility>
#include <vector>

using Morvane::DetectionResult;
using Morvane::DetectionResultList;
using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::FrequencyStoreListHelper;

namespace {

constexpr FrequencyStoreListHelper::ListType kNotePad = FrequencyStoreListHelper::ListType_NotePad;
constexpr FrequencyStoreListHelper::ListType kMemoryScan = FrequencyStoreListHelper::ListType_MemoryScan;

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
    const char *kind = "";
    FrequencyStoreListHelper::ListType type = kNotePad;
    int rows = 0;
    QString file;       // written once, read by the scan and the import
    QString exportFile; // where the export writes
    FrequencyStoreList list;
    DetectionResultList results; // the detection kind's source
};

QByteArray readAll(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

[[noreturn]] void die(const QString &message)
{
    std::fprintf(stderr, "bench_csv: %s\n", qPrintable(message));
    std::exit(2);
}

// The fixed-frequency entries of the example list.
QVector<FrequencyStoreEntry> fixedEntries()
{
    FrequencyStoreList example;
    if (!example.LoadXml(QStringLiteral(MORVANE_EXAMPLE_LIST)))
        die(QStringLiteral("cannot load " MORVANE_EXAMPLE_LIST));
    QVector<FrequencyStoreEntry> fixed;
    for (const FrequencyStoreEntry &entry : example.GetFrequencyStoreEntry()) {
        if (entry.GetChoiceFrequencyStoreEntry() == FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings)
            fixed.append(entry);
    }
    return fixed;
}

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

// A memory scan row with every column: receiver settings, detail, and
// direction-finding settings with a step, so that the file has the full
// header and reads back.
FrequencyStoreEntry memoryScanEntry(const FrequencyStoreEntry &source, int row)
{
    FrequencyStoreEntry entry = notepadEntry(source, row);
    entry.SetAntenna(QStringLiteral("Antenna %1").arg(row % 4));
    Morvane::FFM_Settings &settings = entry.GetFFM_Settings();
    settings.SetIFStep(500.0);
    Morvane::FFM_SettingsDetail &detail = settings.GetDetail();
    detail.SetActive(row % 2 == 0);
    detail.SetAFC(Morvane::FFM_SettingsDetail::AFC_ON);
    detail.SetAttenuation(Morvane::FFM_SettingsDetail::Attenuation_AUTO);
    detail.SetSquelchState(Morvane::FFM_SettingsDetail::SquelchState_ON);
    detail.SetSquelchValue(-100 - row % 20);
    detail.SetChannelNo(row % 100);
    detail.SetAlarm(row % 3 == 0);
    Morvane::DF_Settings &df = entry.GetDF_Settings();
    Morvane::Bandwidth bandwidth;
    bandwidth.SetValue(12500.0);
    df.SetBandwidth(bandwidth);
    df.SetDFMode(Morvane::DF_Settings::DFMode_Norm);
    df.SetAveraging(1.5);
    df.SetDFStep(6250.0);
    df.GetDetail().SetLevelThreshold(-95.5);
    df.GetDetail().SetQualityThreshold(0);
    return entry;
}

// A detection result with a modulation word of the FSK family, a position
// and the usual measurements.
DetectionResult detectionResult(int row)
{
    DetectionResult r;
    r.SetID(QStringLiteral("det-%1").arg(row));
    r.SetType(QStringLiteral("Data"));
    Morvane::Frequency frequency;
    frequency.SetValue(3000000.0 + 25.0 * row);
    r.SetFrequency(frequency);
    Morvane::Bandwidth bandwidth;
    bandwidth.SetValue(300.0);
    r.SetBandwidth(bandwidth);
    r.SetLevel(-70.0 - row % 30);
    r.SetStartTime(QDateTime(QDate(2026, 11, 23), QTime(0, 0), Qt::UTC).addSecs(row));
    r.SetConfidence(row % 100);
    r.SetModulation(row % 2 ? QStringLiteral("FSK2") : QStringLiteral("PSK4A"));
    Morvane::Baudrate baudrate;
    baudrate.SetValue(100.0);
    r.SetBaudrate(baudrate);
    Morvane::Shift shift;
    shift.SetValue(170.0);
    r.SetShift(shift);
    r.SetDecoder(QStringLiteral("ITA2,SITOR-B"));
    r.SetAzimuth(row % 360);
    r.SetDFQuality(80.0);
    r.SetLongitude(16.0 + (row % 100) / 100.0);
    r.SetLatitude(48.0);
    return r;
}

std::unique_ptr<Dataset> makeDataset(const char *kind, int rows, const QString &dir)
{
    static const QVector<FrequencyStoreEntry> fixed = fixedEntries();
    auto set = std::make_unique<Dataset>();
    set->kind = kind;
    set->rows = rows;
    set->file = dir + QStringLiteral("/%1-%2.csv").arg(QLatin1String(kind)).arg(rows);
    set->exportFile = dir + QStringLiteral("/%1-%2-exported.csv").arg(QLatin1String(kind)).arg(rows);
    FileHandling files;
    bool written = false;
    if (std::string(kind) == "detection") {
        set->results.SetUsage(DetectionResultList::Usage_Resultlist);
        set->results.SetComment(QStringLiteral("bench"));
        set->results.SetID(QStringLiteral("bench"));
        set->results.SetType(QStringLiteral("Detection"));
        for (int i = 0; i < rows; ++i)
            set->results.AppendDetectionResult(detectionResult(i));
        written = files.ExportFrequencyStoreList(true, set->file, set->results);
    } else {
        set->type = std::string(kind) == "memoryscan" ? kMemoryScan : kNotePad;
        for (int i = 0; i < rows; ++i) {
            const FrequencyStoreEntry &source = fixed.at(i % fixed.size());
            set->list.AppendFrequencyStoreEntry(set->type == kMemoryScan ? memoryScanEntry(source, i)
                                                                         : notepadEntry(source, i));
        }
        written = files.ExportFrequencyStoreList(true, set->file, set->list, set->type);
    }
    if (!written)
        die(QStringLiteral("cannot write ") + set->file);
    std::printf("%s of %d rows: %.2f MB\n", kind, rows, QFile(set->file).size() / (1024.0 * 1024.0));
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
                                            set.type)) {
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
        const bool ok = files.ImportCSV(set.file, list, set.type);
        state.PauseTiming();
        bool same = ok && list.GetFrequencyStoreEntry().size() == set.rows;
        if (same && set.type == kNotePad) {
            same = list == set.list;
        } else if (same) {
            same = files.ExportFrequencyStoreList(true, set.exportFile, list, set.type)
                && readAll(set.exportFile) == readAll(set.file);
        }
        list = FrequencyStoreList();
        state.ResumeTiming();
        if (!same) {
            state.SkipWithError("the import gave another list");
            break;
        }
    }
}

void Convert(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        FileHandling files;
        const bool ok = files.ExportFrequencyStoreList(true, set.exportFile, const_cast<DetectionResultList &>(set.results));
        state.PauseTiming();
        const bool same = ok && readAll(set.exportFile) == readAll(set.file);
        state.ResumeTiming();
        if (!same) {
            state.SkipWithError("the conversion failed or wrote another file");
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

using Path = void (*)(benchmark::State &, const Dataset &);

// The kinds of file and the paths measured on each.
const std::vector<std::pair<const char *, std::vector<std::pair<const char *, Path>>>> &kinds()
{
    static const std::vector<std::pair<const char *, std::vector<std::pair<const char *, Path>>>> list = {
        {"notepad", {{"CsvScan", CsvScan}, {"ExportCsv", ExportCsv}, {"ImportCsv", ImportCsv}}},
        {"memoryscan", {{"CsvScan", CsvScan}, {"ExportCsv", ExportCsv}, {"ImportCsv", ImportCsv}}},
        {"detection", {{"CsvScan", CsvScan}, {"Convert", Convert}}},
    };
    return list;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    const int n = rowsFromEnvironment();
    QTemporaryDir dir;
    if (!dir.isValid())
        return 2;
    std::vector<std::unique_ptr<Dataset>> sets;
    for (const auto &kind : kinds()) {
        for (int rows : {n, 4 * n}) {
            sets.push_back(makeDataset(kind.first, rows, dir.path()));
            for (const auto &path : kind.second) {
                benchmark::RegisterBenchmark(
                    (std::string(kind.first) + "/" + path.first + "/" + std::to_string(rows)).c_str(), path.second,
                    *sets.back())
                    ->Unit(benchmark::kMillisecond)
                    ->Iterations(1)
                    ->Repetitions(5);
            }
        }
    }
    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nCPU time per operation in ms, its ratio to the scan of the same file, the growth t(%d)/t(%d) "
                "(4.00 is linear) and the rows per second at %d:\n",
                4 * n, n, 4 * n);
    std::printf("%-22s %12s %12s %10s %10s %8s %12s\n", "path", "ms@N", "ms@4N", "/scan@N", "/scan@4N", "growth",
                "rows/s@4N");
    const auto time = [&](const std::string &name, int rows) {
        const auto it = reporter.milliseconds.find(name + "/" + std::to_string(rows));
        return it == reporter.milliseconds.end() ? 0.0 : it->second;
    };
    bool complete = true;
    for (const auto &kind : kinds()) {
        const std::string scan = std::string(kind.first) + "/CsvScan";
        for (const auto &path : kind.second) {
            const std::string name = std::string(kind.first) + "/" + path.first;
            const double atN = time(name, n);
            const double at4N = time(name, 4 * n);
            const double scanN = time(scan, n);
            const double scan4N = time(scan, 4 * n);
            if (atN <= 0 || at4N <= 0 || scanN <= 0 || scan4N <= 0) {
                std::printf("%-22s failed or left out\n", name.c_str());
                complete = false;
                continue;
            }
            std::printf("%-22s %12.2f %12.2f %10.2f %10.2f %8.2f %12.0f\n", name.c_str(), atN, at4N, atN / scanN,
                        at4N / scan4N, at4N / atN, 4.0 * n / (at4N / 1e3));
        }
    }
    return complete ? 0 : 1;
}
