// How the store list scales. Two lists are built from the entries of the
// example list, cycled with fresh IDs and with a share of whole entry trees
// (see cycledEntries): N entries and 4N entries (N = 25,000
// unless MORVANE_BENCH_N says otherwise). Each list is written once to a
// temporary directory, as XML, as binary and as compressed binary, and every
// path is then measured at both sizes on those same bytes:
//
//   XmlScan          QXmlStreamReader over the XML file, every token read and
//                    dropped: the baseline of the XML paths
//   LoadXml          LoadXml(fileName)
//   SetXmlString     SetXmlString(text), the text of the XML file
//   SaveXml          SaveXml(fileName)
//   GetXmlString     GetXmlString()
//   SetBinary        SetBinaryRepresentation(QByteArray &), the binary file
//   LoadBinary       LoadBinary(QFile *)
//   GetBinary        GetBinaryRepresentationAsQByteArray()
//   GetCompressed    GetCompressedBinaryRepresentationAsQByteArray(level)
//   SetCompressed    SetCompressedBinaryRepresentation, the compressed file
//   Check            Check()
//   Equal            operator== between two equal lists built apart
//   Copy             the copy constructor (which makes its copy private)
//   Append           AppendFrequencyStoreEntry N times on a fresh list, with
//                    validation on
//
// Every result of a read or a write is compared with what it must be; the
// comparison, the destruction of the list read and the like are not timed.
// At the end a table gives, per path, its time at N and 4N, its ratio to the
// scan at the same size, the growth t(4N)/t(N) and the entries per second at
// 4N, and after it how the binary reads compare with the XML reads at 4N.
// Last comes the memory a loaded list of 4N entries holds: the growth of
// the resident set across LoadXml against the size of the XML file, measured
// in a child process that runs nothing else.
//
// Environment:
//   MORVANE_BENCH_N           N (default 25000); the large list has 4N entries
//   MORVANE_BENCH_ITERATIONS  iterations per measurement: by default 1 for the
//                             reads and writes, and as many as fill half a
//                             second for Check, Equal, Copy and Append
//   MORVANE_BENCH_REPETITIONS repetitions of each measurement (default 5); the
//                             table takes the fastest
//   MORVANE_BENCH_MEMORY      0 skips the memory measurement
// The options of Google Benchmark work as usual, --benchmark_filter=... among
// them; a path left out is shown as "-" in the table.

#include <morvane.h>

#include <benchmark/benchmark.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVector>
#include <QtCore/QXmlStreamReader>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;

namespace {

constexpr int kCompressionLevel = 6;
constexpr int kDefaultEntries = 25000;
constexpr int kDefaultIterations = 1;
// Each measurement is repeated and the fastest repetition counts: on a shared
// machine the other repetitions only add what other programs took.
constexpr int kDefaultRepetitions = 5;
constexpr double kMinimumSeconds = 0.5; // of the paths whose iterations are picked
const char *const kMemoryChildOption = "--morvane-rss-child";

[[noreturn]] void die(const std::string &message)
{
    std::fprintf(stderr, "bench_scale: %s\n", message.c_str());
    std::exit(2);
}

// A positive number from the environment, or the default when the variable is
// not set.
int positiveFromEnvironment(const char *name, int defaultValue, int maximum)
{
    const char *text = std::getenv(name);
    if (!text || !*text)
        return defaultValue;
    char *end = nullptr;
    const long value = std::strtol(text, &end, 10);
    if (*end || value < 1 || value > maximum)
        die(std::string(name) + " must be a number from 1 to " + std::to_string(maximum) + ", not \"" + text + "\"");
    return int(value);
}

double megabytes(double bytes)
{
    return bytes / (1024.0 * 1024.0);
}

QByteArray readFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        die("cannot read " + fileName.toStdString());
    return file.readAll();
}

void writeFile(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        die("cannot write " + fileName.toStdString());
}

// --- the lists and their files ---------------------------------------------------

struct Dataset
{
    int entries = 0;
    QString xmlFile;
    QString binaryFile;
    QString compressedFile;
    QString savedXmlFile; // where SaveXml writes

    FrequencyStoreList list;  // every file was written from this list
    FrequencyStoreList other; // equal to list, read back from the binary file
    QVector<FrequencyStoreEntry> items; // what Append appends

    QString xmlText;   // the XML file, decoded
    QByteArray xml;    // the XML file's bytes
    QByteArray binary; // the binary file's bytes
    QByteArray compressed;
};

const FrequencyStoreList &example()
{
    static const FrequencyStoreList list = [] {
        FrequencyStoreList l;
        try {
            if (!l.LoadXml(QStringLiteral(MORVANE_EXAMPLE_LIST)) || l.GetFrequencyStoreEntry().isEmpty())
                die("cannot load " MORVANE_EXAMPLE_LIST);
        } catch (const std::exception &e) {
            die(std::string("cannot load " MORVANE_EXAMPLE_LIST ": ") + e.what());
        }
        return l;
    }();
    return list;
}

// The example's entries that carry the members beyond their settings branch,
// cycled over to lend those members to the plain entries.
QVector<FrequencyStoreEntry> treeEntries()
{
    QVector<FrequencyStoreEntry> trees;
    for (const FrequencyStoreEntry &entry : example().GetFrequencyStoreEntry()) {
        if (entry.IsProfile_DataSet() && entry.IsDemodulator_SettingsSet())
            trees.append(entry);
    }
    if (trees.isEmpty())
        die("the example list has no entry with profile data and demodulator settings");
    return trees;
}

// The one example entry with a location of stations and location results.
const FrequencyStoreEntry &locatedEntry()
{
    static const FrequencyStoreEntry located = [] {
        for (const FrequencyStoreEntry &entry : example().GetFrequencyStoreEntry()) {
            if (!entry.GetLocation().GetStation().isEmpty() && !entry.GetLocation().GetLocationResult().isEmpty())
                return entry;
        }
        die("the example list has no entry with stations and location results");
    }();
    return located;
}

// N entries of the example, cycled, each with an ID of its own, and with a
// share of whole trees as a working list has them: seven entries in ten carry
// profile data and demodulator settings, two in ten also a location with
// stations and location results, stations of their own, detection and result
// list, and one in ten direction-finding and shape-detector settings as well.
QVector<FrequencyStoreEntry> cycledEntries(int count)
{
    const QVector<FrequencyStoreEntry> &source = example().GetFrequencyStoreEntry();
    const QVector<FrequencyStoreEntry> trees = treeEntries();
    const FrequencyStoreEntry &located = locatedEntry();
    QVector<FrequencyStoreEntry> entries;
    entries.reserve(count);
    for (int i = 0; i < count; ++i) {
        FrequencyStoreEntry entry(source.at(i % source.size()));
        entry.SetID(QStringLiteral("FS-%1").arg(i + 1, 6, 10, QLatin1Char('0')));
        const FrequencyStoreEntry &tree = trees.at(i % trees.size());
        const int share = i % 10;
        if (share < 7) {
            entry.SetProfile_Data(tree.GetProfile_Data());
            entry.SetDemodulator_Settings(tree.GetDemodulator_Settings());
        }
        if (share < 2) {
            entry.SetLocation(located.GetLocation());
            entry.SetStation(located.GetStation());
            entry.SetDetection(located.GetDetection());
            entry.SetResultList(located.GetResultList());
        }
        if (share < 1) {
            entry.SetDF_Settings(trees.first().GetDF_Settings());
            entry.SetShapeDetectorSettings(trees.first().GetShapeDetectorSettings());
        }
        entries.append(entry);
    }
    return entries;
}

std::unique_ptr<Dataset> makeDataset(int entries, const QString &dir)
{
    auto set = std::make_unique<Dataset>();
    set->entries = entries;
    const QString base = dir + QStringLiteral("/storelist-%1").arg(entries);
    set->xmlFile = base + QStringLiteral(".xml");
    set->binaryFile = base + QStringLiteral(".bin");
    set->compressedFile = base + QStringLiteral(".binz");
    set->savedXmlFile = base + QStringLiteral("-saved.xml");

    // The list: the example's name, usage, time stamp and target areas, and
    // the cycled entries. The items of Append are a vector of their own.
    set->items = cycledEntries(entries);
    set->list = example();
    set->list.ResetFrequencyStoreEntry();
    for (const FrequencyStoreEntry &entry : cycledEntries(entries))
        set->list.AppendFrequencyStoreEntry(entry);

    try {
        if (!set->list.SaveXml(set->xmlFile))
            die("cannot write " + set->xmlFile.toStdString());
    } catch (const std::exception &e) {
        die(std::string("SaveXml of the generated list failed: ") + e.what());
    }
    writeFile(set->binaryFile, set->list.GetBinaryRepresentationAsQByteArray());
    writeFile(set->compressedFile, set->list.GetCompressedBinaryRepresentationAsQByteArray(kCompressionLevel));

    set->xml = readFile(set->xmlFile);
    set->xmlText = QString::fromUtf8(set->xml);
    set->binary = readFile(set->binaryFile);
    set->compressed = readFile(set->compressedFile);

    QFile binary(set->binaryFile);
    if (!set->other.LoadBinary(&binary) || set->other.GetFrequencyStoreEntry().size() != entries)
        die("the binary file of " + std::to_string(entries) + " entries does not read back");
    if (!(set->other == set->list))
        die("the binary file of " + std::to_string(entries) + " entries reads back as another list");

    std::printf("list of %d entries: XML %.2f MB, binary %.2f MB, compressed (level %d) %.2f MB\n", entries,
                megabytes(set->xml.size()), megabytes(set->binary.size()), kCompressionLevel,
                megabytes(set->compressed.size()));
    std::fflush(stdout);
    return set;
}

// --- the measurements --------------------------------------------------------------

// The registered names of the measurements that failed.
std::set<std::string> &failures()
{
    static std::set<std::string> names;
    return names;
}

// The registered name of the measurement that runs now.
std::string &current()
{
    static std::string name;
    return name;
}

void fail(benchmark::State &state, const std::string &message)
{
    failures().insert(current());
    state.SkipWithError(message.c_str());
}

// A list that a read path fills, compared with the list its bytes were written
// from; both the comparison and the destruction are left out of the time.
// False (and the measurement failed) when the read went wrong.
bool verifyRead(benchmark::State &state, const Dataset &set, std::optional<FrequencyStoreList> &read, bool ok,
                const char *what)
{
    state.PauseTiming();
    bool good = ok && *read == set.list;
    read.reset();
    state.ResumeTiming();
    if (!good)
        fail(state, std::string(what) + (ok ? " gave another list" : " failed"));
    return good;
}

void XmlScan(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        // Read as LoadXml reads: the whole file, then the reader over its bytes.
        QFile file(set.xmlFile);
        if (!file.open(QIODevice::ReadOnly)) {
            fail(state, "cannot open the XML file");
            break;
        }
        QXmlStreamReader reader(file.readAll());
        qint64 tokens = 0;
        while (!reader.atEnd()) {
            reader.readNext();
            ++tokens;
        }
        benchmark::DoNotOptimize(tokens);
        if (reader.hasError()) {
            fail(state, "the XML file is not well-formed: " + reader.errorString().toStdString());
            break;
        }
    }
}

void LoadXml(benchmark::State &state, const Dataset &set)
{
    std::optional<FrequencyStoreList> read;
    for (auto _ : state) {
        read.emplace();
        bool ok = false;
        try {
            ok = read->LoadXml(set.xmlFile);
        } catch (const std::exception &) {
        }
        if (!verifyRead(state, set, read, ok, "LoadXml"))
            break;
    }
}

void SetXmlString(benchmark::State &state, const Dataset &set)
{
    std::optional<FrequencyStoreList> read;
    for (auto _ : state) {
        read.emplace();
        const bool ok = read->SetXmlString(set.xmlText);
        if (!verifyRead(state, set, read, ok, "SetXmlString"))
            break;
    }
}

void SaveXml(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        bool ok = false;
        try {
            ok = set.list.SaveXml(set.savedXmlFile);
        } catch (const std::exception &) {
        }
        state.PauseTiming();
        const bool same = ok && readFile(set.savedXmlFile) == set.xml;
        state.ResumeTiming();
        if (!same) {
            fail(state, ok ? "SaveXml wrote other bytes" : "SaveXml failed");
            break;
        }
    }
}

void GetXmlString(benchmark::State &state, const Dataset &set)
{
    QString text;
    for (auto _ : state) {
        text = set.list.GetXmlString();
        state.PauseTiming();
        // The same document as the file, but for the declaration: a text has
        // no encoding.
        const QChar newline(QLatin1Char('\n'));
        const bool same = !text.isEmpty()
            && QStringView(text).mid(text.indexOf(newline)) == QStringView(set.xmlText).mid(set.xmlText.indexOf(newline));
        text = QString();
        state.ResumeTiming();
        if (!same) {
            fail(state, "GetXmlString gave another document");
            break;
        }
    }
}

void SetBinary(benchmark::State &state, const Dataset &set)
{
    QByteArray bytes = set.binary; // the reader takes a non-const array
    std::optional<FrequencyStoreList> read;
    for (auto _ : state) {
        read.emplace();
        const bool ok = read->SetBinaryRepresentation(bytes);
        if (!verifyRead(state, set, read, ok, "SetBinaryRepresentation"))
            break;
    }
}

void LoadBinary(benchmark::State &state, const Dataset &set)
{
    std::optional<FrequencyStoreList> read;
    for (auto _ : state) {
        read.emplace();
        QFile file(set.binaryFile);
        const bool ok = read->LoadBinary(&file);
        if (!verifyRead(state, set, read, ok, "LoadBinary"))
            break;
    }
}

void GetBinary(benchmark::State &state, const Dataset &set)
{
    QByteArray bytes;
    for (auto _ : state) {
        bytes = set.list.GetBinaryRepresentationAsQByteArray();
        state.PauseTiming();
        const bool same = bytes == set.binary;
        bytes = QByteArray();
        state.ResumeTiming();
        if (!same) {
            fail(state, "GetBinaryRepresentationAsQByteArray gave other bytes");
            break;
        }
    }
}

void GetCompressed(benchmark::State &state, const Dataset &set)
{
    QByteArray bytes;
    for (auto _ : state) {
        bytes = set.list.GetCompressedBinaryRepresentationAsQByteArray(kCompressionLevel);
        state.PauseTiming();
        const bool same = bytes == set.compressed;
        bytes = QByteArray();
        state.ResumeTiming();
        if (!same) {
            fail(state, "GetCompressedBinaryRepresentationAsQByteArray gave other bytes");
            break;
        }
    }
}

void SetCompressed(benchmark::State &state, const Dataset &set)
{
    std::optional<FrequencyStoreList> read;
    for (auto _ : state) {
        read.emplace();
        const bool ok = read->SetCompressedBinaryRepresentation(set.compressed);
        if (!verifyRead(state, set, read, ok, "SetCompressedBinaryRepresentation"))
            break;
    }
}

void Check(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        try {
            set.list.Check();
        } catch (const std::exception &e) {
            fail(state, std::string("Check failed: ") + e.what());
            break;
        }
    }
}

void Equal(benchmark::State &state, const Dataset &set)
{
    for (auto _ : state) {
        const bool same = set.list == set.other;
        benchmark::DoNotOptimize(same);
        if (!same) {
            fail(state, "the two lists compare unequal");
            break;
        }
    }
}

void Copy(benchmark::State &state, const Dataset &set)
{
    std::optional<FrequencyStoreList> copy;
    for (auto _ : state) {
        copy.emplace(set.list);
        state.PauseTiming();
        const bool good = copy->GetFrequencyStoreEntry().size() == set.entries;
        copy.reset();
        state.ResumeTiming();
        if (!good) {
            fail(state, "the copy does not hold every entry");
            break;
        }
    }
}

void Append(benchmark::State &state, const Dataset &set)
{
    std::optional<FrequencyStoreList> list;
    for (auto _ : state) {
        state.PauseTiming();
        list.emplace();
        list->SetValidate(true);
        state.ResumeTiming();
        try {
            for (const FrequencyStoreEntry &entry : set.items)
                list->AppendFrequencyStoreEntry(entry);
        } catch (const std::exception &e) {
            fail(state, std::string("AppendFrequencyStoreEntry failed: ") + e.what());
            break;
        }
        state.PauseTiming();
        const bool good = list->GetFrequencyStoreEntry().size() == set.entries;
        list.reset();
        state.ResumeTiming();
        if (!good) {
            fail(state, "the list does not hold every entry");
            break;
        }
    }
}

using Measurement = void (*)(benchmark::State &, const Dataset &);

struct Path
{
    const char *name;
    Measurement run;
    const char *what; // for the table
    // The in-memory paths take a few microseconds per entry: Google Benchmark
    // picks their iteration count. The reads and writes run a fixed count.
    bool automaticIterations = false;
};

const Path kPaths[] = {
    {"XmlScan", XmlScan, "QXmlStreamReader token scan"},
    {"LoadXml", LoadXml, "LoadXml(fileName)"},
    {"SetXmlString", SetXmlString, "SetXmlString(text)"},
    {"SaveXml", SaveXml, "SaveXml(fileName)"},
    {"GetXmlString", GetXmlString, "GetXmlString()"},
    {"SetBinary", SetBinary, "SetBinaryRepresentation(QByteArray&)"},
    {"LoadBinary", LoadBinary, "LoadBinary(QFile*)"},
    {"GetBinary", GetBinary, "GetBinaryRepresentationAsQByteArray()"},
    {"GetCompressed", GetCompressed, "GetCompressedBinary...AsQByteArray(6)"},
    {"SetCompressed", SetCompressed, "SetCompressedBinaryRepresentation"},
    {"Check", Check, "Check()", true},
    {"Equal", Equal, "operator==", true},
    {"Copy", Copy, "copy constructor", true},
    {"Append", Append, "AppendFrequencyStoreEntry x n", true},
};

std::string benchmarkName(const Path &path, int entries)
{
    return std::string(path.name) + "/" + std::to_string(entries);
}

// Keeps the CPU time per iteration of each measurement, by registered name.
// The table is made from the CPU time: the paths run in this one thread, and
// on a machine that is busy with other work too the real time says more about
// that work than about the library. Both are in the lines of each run.
class TableReporter : public benchmark::ConsoleReporter
{
public:
    // Colours only on a terminal.
    TableReporter()
        : ConsoleReporter(isatty(STDOUT_FILENO) ? OO_Defaults : OO_Tabular)
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration || run.iterations <= 0)
                continue;
            // The fastest repetition.
            const double perOperation = run.cpu_accumulated_time / double(run.iterations);
            const auto it = seconds.find(run.run_name.function_name);
            if (it == seconds.end() || perOperation < it->second)
                seconds[run.run_name.function_name] = perOperation;
        }
    }

    // Seconds per operation, or a negative number when not measured.
    double time(const Path &path, int entries) const
    {
        const std::string name = benchmarkName(path, entries);
        if (failures().count(name))
            return -1;
        const auto it = seconds.find(name);
        return it == seconds.end() ? -1 : it->second;
    }

private:
    std::map<std::string, double> seconds;
};

std::string cell(double value, const char *format)
{
    if (!(value >= 0))
        return "-";
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

double ratio(double a, double b)
{
    return a >= 0 && b > 0 ? a / b : -1;
}

void printTable(const TableReporter &reporter, int small, int large)
{
    const Path &scan = kPaths[0];
    const double scanSmall = reporter.time(scan, small);
    const double scanLarge = reporter.time(scan, large);
    const std::string nSmall = std::to_string(small);
    const std::string nLarge = std::to_string(large);

    std::printf("\nCPU time per operation in ms, its ratio to the XML scan at the same size, the growth\n"
                "t(%d)/t(%d) (4.00 is linear) and the entries per second at %d:\n",
                large, small, large);
    std::printf("%-40s %12s %12s %10s %10s %9s %14s\n", "path", ("ms@" + nSmall).c_str(),
                ("ms@" + nLarge).c_str(), ("/scan@" + nSmall).c_str(), ("/scan@" + nLarge).c_str(), "growth",
                ("entries/s@" + nLarge).c_str());
    for (const Path &path : kPaths) {
        const double a = reporter.time(path, small);
        const double b = reporter.time(path, large);
        std::printf("%-40s %12s %12s %10s %10s %9s %14s\n", path.what, cell(a * 1e3, "%.2f").c_str(),
                    cell(b * 1e3, "%.2f").c_str(), cell(ratio(a, scanSmall), "%.2f").c_str(),
                    cell(ratio(b, scanLarge), "%.2f").c_str(), cell(ratio(b, a), "%.2f").c_str(),
                    cell(b > 0 ? large / b : -1, "%.0f").c_str());
    }
    std::printf("\n");

    const auto binaryAgainstXml = [&](const char *binaryPath, const char *xmlPath) {
        const Path *binary = nullptr;
        const Path *xml = nullptr;
        for (const Path &path : kPaths) {
            if (!std::strcmp(path.name, binaryPath))
                binary = &path;
            if (!std::strcmp(path.name, xmlPath))
                xml = &path;
        }
        std::printf("%s / %s at %d entries = %s\n", binary->what, xml->what, large,
                    cell(ratio(reporter.time(*binary, large), reporter.time(*xml, large)), "%.4f").c_str());
    };
    binaryAgainstXml("LoadBinary", "LoadXml");
    binaryAgainstXml("SetBinary", "SetXmlString");
}

// --- memory --------------------------------------------------------------------------

long long residentBytes()
{
    long long size = 0;
    long long resident = 0;
    FILE *statm = std::fopen("/proc/self/statm", "r");
    if (!statm)
        return -1;
    const int read = std::fscanf(statm, "%lld %lld", &size, &resident);
    std::fclose(statm);
    return read == 2 ? resident * sysconf(_SC_PAGESIZE) : -1;
}

long long peakResidentBytes()
{
    FILE *status = std::fopen("/proc/self/status", "r");
    if (!status)
        return -1;
    char line[256];
    long long kilobytes = -1;
    while (std::fgets(line, sizeof line, status)) {
        if (!std::strncmp(line, "VmHWM:", 6)) {
            kilobytes = std::atoll(line + 6);
            break;
        }
    }
    std::fclose(status);
    return kilobytes < 0 ? -1 : kilobytes * 1024;
}

// The child: loads the file (after the example list, which stays loaded) and
// writes
// "<ok> <entries> <rss before> <rss after> <peak rss>" to stdout.
int memoryChild(const char *fileName)
{
    // What the first list of a process sets up once (the record descriptors,
    // Qt's own tables) is not the list's.
    example();
    malloc_trim(0);
    // Starts the peak of the resident set afresh, where the kernel allows it.
    if (FILE *clear = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", clear);
        std::fclose(clear);
    }
    const long long before = residentBytes();
    FrequencyStoreList list;
    bool ok = false;
    try {
        ok = list.LoadXml(QString::fromLocal8Bit(fileName));
    } catch (const std::exception &e) {
        std::fprintf(stderr, "bench_scale: LoadXml failed: %s\n", e.what());
    }
    malloc_trim(0);
    const long long after = residentBytes();
    const long long peak = peakResidentBytes();
    std::printf("%d %d %lld %lld %lld\n", ok ? 1 : 0, int(list.GetFrequencyStoreEntry().size()), before, after, peak);
    return ok ? 0 : 1;
}

// Runs this program again as the child above, so that nothing the benchmark
// allocated before stays in the heap the load is measured in.
bool measureMemory(const char *self, const Dataset &set)
{
    std::printf("memory: LoadXml of %d entries in a child process ...\n", set.entries);
    std::fflush(stdout);
    int channel[2];
    if (pipe(channel) != 0)
        die("pipe failed");
    const std::string fileName = QFile::encodeName(set.xmlFile).toStdString();
    const pid_t child = fork();
    if (child < 0)
        die("fork failed");
    if (child == 0) {
        close(channel[0]);
        dup2(channel[1], STDOUT_FILENO);
        close(channel[1]);
        execl("/proc/self/exe", self, kMemoryChildOption, fileName.c_str(), static_cast<char *>(nullptr));
        _exit(127);
    }
    close(channel[1]);
    std::string output;
    char buffer[256];
    ssize_t n;
    while ((n = read(channel[0], buffer, sizeof buffer)) > 0)
        output.append(buffer, size_t(n));
    close(channel[0]);
    int status = 0;
    waitpid(child, &status, 0);

    int ok = 0;
    int entries = 0;
    long long before = 0;
    long long after = 0;
    long long peak = 0;
    if (std::sscanf(output.c_str(), "%d %d %lld %lld %lld", &ok, &entries, &before, &after, &peak) != 5 || !ok
        || entries != set.entries || before < 0 || after < 0) {
        std::printf("memory: the child failed (status %d)\n", status);
        return false;
    }
    const double growth = megabytes(double(after - before));
    const double file = megabytes(double(QFileInfo(set.xmlFile).size()));
    std::printf("memory: RSS growth %.1f MB for %d entries (%.0f bytes per entry), XML file %.1f MB, "
                "RSS growth / XML size = %.2f\n",
                growth, entries, double(after - before) / entries, file, file > 0 ? growth / file : 0.0);
    if (peak > 0)
        std::printf("memory: peak RSS growth during LoadXml %.1f MB (%.2f x the XML size)\n",
                    megabytes(double(peak - before)), file > 0 ? megabytes(double(peak - before)) / file : 0.0);
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && !std::strcmp(argv[1], kMemoryChildOption))
        return memoryChild(argv[2]);

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;

    const int small = positiveFromEnvironment("MORVANE_BENCH_N", kDefaultEntries, 100000000);
    const int large = 4 * small;
    const bool fixedIterations = std::getenv("MORVANE_BENCH_ITERATIONS") != nullptr;
    const int iterations = positiveFromEnvironment("MORVANE_BENCH_ITERATIONS", kDefaultIterations, 1000000);
    const int repetitions = positiveFromEnvironment("MORVANE_BENCH_REPETITIONS", kDefaultRepetitions, 1000);
    const char *memory = std::getenv("MORVANE_BENCH_MEMORY");
    const bool measureMemoryToo = !(memory && !std::strcmp(memory, "0"));

    QTemporaryDir dir;
    if (!dir.isValid())
        die("cannot make a temporary directory");

    const auto started = std::chrono::steady_clock::now();
    std::vector<std::unique_ptr<Dataset>> sets;
    sets.push_back(makeDataset(small, dir.path()));
    sets.push_back(makeDataset(large, dir.path()));
    std::printf("lists built and written in %.1f s\n\n",
                std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
    std::fflush(stdout);

    // Every path at N first, then every path at 4N.
    for (const auto &set : sets) {
        for (const Path &path : kPaths) {
            const Dataset *data = set.get();
            const Measurement run = path.run;
            const std::string name = benchmarkName(path, set->entries);
            benchmark::internal::Benchmark *bench = benchmark::RegisterBenchmark(name.c_str(),
                                         [run, data, name](benchmark::State &state) {
                                             current() = name;
                                             run(state, *data);
                                             state.SetItemsProcessed(state.iterations() * data->entries);
                                         })
                ->Unit(benchmark::kMillisecond)
                ->Repetitions(repetitions);
            if (fixedIterations || !path.automaticIterations)
                bench->Iterations(iterations);
            else
                bench->MinTime(kMinimumSeconds);
        }
    }

    TableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    printTable(reporter, small, large);
    std::fflush(stdout);

    bool memoryMeasured = true;
    if (measureMemoryToo)
        memoryMeasured = measureMemory(argv[0], *sets.back());
    if (!failures().empty()) {
        std::string names;
        for (const std::string &name : failures())
            names += " " + name;
        std::printf("failed:%s\n", names.c_str());
    }
    return failures().empty() && memoryMeasured ? 0 : 1;
}
