// Feeds arbitrary bytes, as a CSV file, to every import of FileHandling, for
// every list type and for types outside the table. Whatever the bytes:
// - no exception leaves ImportCSV: failures are its false result;
// - the entries the list held before stay as they were, at its head;
// - what is added are rows of the file: no more entries than the file has
//   rows, each with a Type, each passing Check(false);
// - a file that the CSV reader refuses adds nothing;
// - the types without a CSV import (DetectionResult, TransducerList, and
//   values outside the table) leave the list as it was.
// The corpus: fuzz/corpus/csvimport/.

#include "fuzztarget.h"

#include <morvane.h>

#include <QtCore/QTemporaryDir>

namespace {

using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Type = Morvane::FrequencyStoreListHelper::ListType;

const FrequencyStoreList &reference()
{
    static const FrequencyStoreList list = [] {
        FrequencyStoreEntry entry;
        entry.SetType(QStringLiteral("Reference"));
        Morvane::Frequency frequency;
        frequency.SetValue(1000000.0);
        entry.GetFFM_Settings().SetFrequency(frequency);
        Morvane::IFBandwidth bandwidth;
        bandwidth.SetValue(3000.0);
        entry.GetFFM_Settings().SetIFBandwidth(bandwidth);
        FrequencyStoreList l;
        l.AppendFrequencyStoreEntry(entry);
        return l;
    }();
    return list;
}

const QString &inputFile()
{
    static QTemporaryDir dir;
    static const QString path = dir.filePath(QStringLiteral("input.csv"));
    return path;
}

// The rows of the file as the CSV reader sees them, or -1 when it refuses it.
int rowsOf(const QString &path)
{
    try {
        Morvane::CSVFileLoader loader(path);
        const Morvane::CSVColumn *type = loader.GetColumn(QStringLiteral("Type"));
        return type ? int(type->GetValues()->size()) : 0;
    } catch (const ORBELIN::OrbelinException &) {
        return -1;
    }
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    using fuzztarget::require;
    {
        QFile file(inputFile());
        require(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(input) == input.size(),
                "cannot write the input file");
    }
    const int rows = rowsOf(inputFile());
    const FrequencyStoreEntry &head = reference().GetFrequencyStoreEntry().first();
    for (int value = -1; value <= 9; ++value) {
        const Type type = Type(value);
        FrequencyStoreList list = reference();
        list.SetValidate(input.size() % 2 == 0);
        bool ok = false;
        try {
            ok = Morvane::FileHandling().ImportCSV(inputFile(), list, type);
        } catch (...) {
            require(false, "an exception left ImportCSV");
        }
        const QVector<FrequencyStoreEntry> &entries = list.GetFrequencyStoreEntry();
        require(!entries.isEmpty() && entries.first() == head, "the entries ahead of the import were changed");
        const int added = int(entries.size()) - 1;
        // Types 0 to 6 have a CSV import; 7 and 8 refuse, others succeed doing nothing.
        if (value < 0 || value > 6) {
            require(added == 0, "a type without a CSV import added entries");
            require(ok == (value < 0 || value > 8), "a type without a CSV import gave the wrong result");
            continue;
        }
        require(rows >= 0 || (added == 0 && !ok), "a file the reader refuses added entries");
        require(added <= qMax(rows, 0), "more entries than the file has rows");
        for (int i = 1; i < entries.size(); ++i) {
            require(!entries.at(i).GetType().isEmpty(), "an entry without Type was added");
            try {
                entries.at(i).Check(false);
            } catch (const ORBELIN::ReportException &) {
                require(false, "an added entry fails Check");
            }
        }
    }
}
