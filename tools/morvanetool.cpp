// morvane-tool: loads a frequency store list, checks it and writes it again,
// and turns lists into the CSV files of a list type and back.
//
//   morvane-tool convert INPUT OUTPUT...   read INPUT, Check it, write every OUTPUT
//   morvane-tool check INPUT               read INPUT and Check it
//   morvane-tool print INPUT               read INPUT and list its entries, one
//                                          line each with what the entry carries
//   morvane-tool export --type TYPE INPUT OUT.csv
//                                          write the list INPUT as a CSV file of TYPE
//   morvane-tool import --type TYPE IN.csv OUTPUT
//                                          read the CSV file IN.csv of TYPE into a
//                                          new list, Check it and write it as OUTPUT
//   morvane-tool convert-detections RESULTS.xml OUT.csv|OUT.xml
//                                          convert the detection result list
//                                          RESULTS.xml into store entries and
//                                          write the detection result CSV file or
//                                          the XML of the converted list
//   morvane-tool --help                    this text
//
// INPUT is a FrequencyStoreList as XML, as binary or as compressed binary; the
// form is recognised from the content. An OUTPUT is written by its suffix:
// .xml (XML), .bin (binary), .binz (compressed binary). Every output written
// is read back and compared with the list. TYPE is a list type with a CSV
// form of a store list: NotePad, Suppress, TargetList, DataResults,
// NOIFrequencies, DetectionConventional or MemoryScan. The CSV files go through
// FileHandling, which reports failures only through its trace and its
// results: the tool turns the trace on and shows its lines on stderr. The exit
// code is 0 on success, 1 when an input cannot be read, fails its Check or a
// file cannot be written, 2 for a usage error.

#include <morvane.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>

using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::FrequencyStoreListHelper;

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

QTextStream &err()
{
    static QTextStream stream(stderr);
    return stream;
}

bool readList(const QString &fileName, FrequencyStoreList &list)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        err() << "cannot open " << fileName << "\n";
        return false;
    }
    QByteArray data = file.readAll();
    const QByteArray head = data.left(64).trimmed();
    if (head.startsWith('<'))
        return list.SetXmlString(QString::fromUtf8(data), true);
    if (list.SetBinaryRepresentation(data))
        return true;
    return list.SetCompressedBinaryRepresentation(data);
}

bool writeList(const QString &fileName, const FrequencyStoreList &list)
{
    QDir().mkpath(QFileInfo(fileName).absolutePath());
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    QByteArray data;
    if (suffix == QLatin1String("xml")) {
        if (!list.SaveXml(fileName))
            return false;
        FrequencyStoreList back;
        return back.LoadXml(fileName) && back == list;
    }
    if (suffix == QLatin1String("bin"))
        data = list.GetBinaryRepresentationAsQByteArray();
    else if (suffix == QLatin1String("binz"))
        data = list.GetCompressedBinaryRepresentationAsQByteArray(9);
    else {
        err() << "unknown output form: " << fileName << " (use .xml, .bin or .binz)\n";
        return false;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(data) != data.size())
        return false;
    file.close();
    FrequencyStoreList back;
    return readList(fileName, back) && back == list;
}

// What an entry carries beyond its settings branch, one short phrase per
// member that is set.
QStringList carried(const FrequencyStoreEntry &entry)
{
    QStringList parts;
    if (entry.IsProfile_DataSet()) {
        const Morvane::Profile_Data &profile = entry.GetProfile_Data();
        parts << QStringLiteral("profile %1 (points of interest: %2)")
                     .arg(profile.GetProfileID())
                     .arg(profile.GetPointOfInterest().size());
    }
    if (entry.IsDemodulator_SettingsSet()) {
        const Morvane::Demodulator_Settings &demodulator = entry.GetDemodulator_Settings();
        parts << QStringLiteral("demodulator %1")
                     .arg(demodulator.ChoiceDemodulator_SettingsToName(demodulator.GetChoiceDemodulator_Settings()));
    }
    if (entry.IsLocationSet()) {
        const Morvane::FrequencyStoreEntryLocation &location = entry.GetLocation();
        parts << QStringLiteral("location (stations: %1, results: %2)")
                     .arg(location.GetStation().size())
                     .arg(location.GetLocationResult().size());
    }
    if (!entry.GetStation().isEmpty())
        parts << QStringLiteral("stations: %1").arg(entry.GetStation().size());
    if (entry.IsDetectionSet())
        parts << QStringLiteral("detection");
    if (entry.IsResultListSet())
        parts << QStringLiteral("result list");
    if (entry.IsDF_SettingsSet())
        parts << QStringLiteral("DF settings %1").arg(entry.GetDF_Settings().GetDFModeAsString());
    if (entry.IsShapeDetectorSettingsSet())
        parts << QStringLiteral("shape detector");
    return parts;
}

void print(const FrequencyStoreList &list)
{
    out() << "list \"" << list.GetName() << "\"";
    if (list.IsUsageSet())
        out() << ", usage " << list.GetUsageAsString();
    out() << ", " << list.GetFrequencyStoreEntry().size() << " entries\n";
    for (const FrequencyStoreEntry &entry : list.GetFrequencyStoreEntry()) {
        out() << "  " << entry.GetType();
        if (entry.IsIDSet())
            out() << " " << entry.GetID();
        if (entry.GetChoiceFrequencyStoreEntry() == FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings) {
            const Morvane::FFM_Settings &ffm = entry.GetFFM_Settings();
            out() << ": fixed frequency " << QString::number(ffm.GetFrequency().GetValue(), 'f', 2)
                  << ", IF bandwidth " << QString::number(ffm.GetIFBandwidth().GetValue(), 'f', 2);
            if (ffm.IsAnalogDemodSet())
                out() << ", " << ffm.GetAnalogDemodAsString();
        } else if (entry.GetChoiceFrequencyStoreEntry()
                   == FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings) {
            const Morvane::ShortTime_Settings &st = entry.GetShortTime_Settings();
            out() << ": short time, " << st.GetFrequency().size() << " frequencies";
            if (st.IsHopsPerSecondSet())
                out() << ", " << QString::number(st.GetHopsPerSecond(), 'f', 2) << " hops/s";
        }
        if (entry.IsCommentSet())
            out() << " (" << entry.GetComment() << ")";
        const QStringList parts = carried(entry);
        if (!parts.isEmpty())
            out() << "; " << parts.join(QStringLiteral(", "));
        out() << "\n";
    }
}

const char *usageText()
{
    return "usage: morvane-tool convert INPUT OUTPUT...\n"
           "       morvane-tool check INPUT\n"
           "       morvane-tool print INPUT\n"
           "       morvane-tool export --type TYPE INPUT OUT.csv\n"
           "       morvane-tool import --type TYPE IN.csv OUTPUT\n"
           "       morvane-tool convert-detections RESULTS.xml OUT.csv|OUT.xml\n"
           "       morvane-tool --help\n"
           "INPUT: a store list as XML, binary or compressed binary; OUTPUT by its suffix:\n"
           ".xml, .bin or .binz. TYPE: NotePad, Suppress, TargetList, DataResults,\n"
           "NOIFrequencies, DetectionConventional or MemoryScan. RESULTS: a detection\n"
           "result list (XML), converted into store entries and written as the detection\n"
           "result CSV file or as the XML of the converted store list.\n";
}

int usage()
{
    err() << usageText();
    return 2;
}

// The list types whose CSV files the tool reads and writes: every type with
// a CSV form of a store list. (DetectionResult files come from a detection
// result list: convert-detections.)
const QStringList &csvTypes()
{
    static const QStringList names = {QStringLiteral("NotePad"),        QStringLiteral("Suppress"),
                                      QStringLiteral("TargetList"),     QStringLiteral("DataResults"),
                                      QStringLiteral("NOIFrequencies"), QStringLiteral("DetectionConventional"),
                                      QStringLiteral("MemoryScan")};
    return names;
}

bool csvType(const QString &name, FrequencyStoreListHelper::ListType &type)
{
    if (!csvTypes().contains(name))
        return false;
    type = FrequencyStoreListHelper().NameToListType(name);
    return true;
}

// FileHandling tells of a failure through the trace: shown on stderr.
void traceToStderr()
{
    ErrorHandler *handler = ErrorHandler::Instance();
    handler->SetTraceMask(handler->GetTraceMask() | ErrorHandler::TraceErrors);
    handler->SetTraceSink([](const QString &, const QString &text, unsigned short) { err() << text << "\n"; });
}

// export --type TYPE INPUT OUT.csv and import --type TYPE IN.csv OUTPUT.
int csvCommand(const QString &command, const QStringList &args)
{
    FrequencyStoreListHelper::ListType type;
    if (args.size() != 5 || args.at(1) != QLatin1String("--type"))
        return usage();
    if (!csvType(args.at(2), type)) {
        err() << "unknown list type " << args.at(2) << " (" << csvTypes().join(QStringLiteral(", ")) << ")\n";
        return 2;
    }
    traceToStderr();
    const QString input = args.at(3);
    const QString output = args.at(4);
    FrequencyStoreList list;
    FileHandling files;
    try {
        if (command == QLatin1String("export")) {
            if (!readList(input, list)) {
                err() << input << ": not a readable frequency store list\n";
                return 1;
            }
            QDir().mkpath(QFileInfo(output).absolutePath());
            if (!files.ExportFrequencyStoreList(true, output, list, type)) {
                err() << output << ": not written\n";
                return 1;
            }
            out() << output << ": " << list.GetFrequencyStoreEntry().size() << " entries written as "
                  << args.at(2) << "\n";
            return 0;
        }
        if (!files.ImportCSV(input, list, type)) {
            err() << input << ": not imported\n";
            return 1;
        }
        list.Check();
        if (!writeList(output, list)) {
            err() << output << ": not written\n";
            return 1;
        }
    } catch (const ORBELIN::ReportException &e) {
        err() << e.GetMessage() << "\n";
        return 1;
    }
    out() << input << ": " << list.GetFrequencyStoreEntry().size() << " entries imported, " << output
          << " written\n";
    return 0;
}

// convert-detections RESULTS OUT.csv|OUT.xml: the detection result list
// RESULTS (XML) converted into a store list and written as the detection
// result CSV file (.csv) or as the XML of the converted list (.xml).
int convertDetections(const QStringList &args)
{
    if (args.size() != 3)
        return usage();
    const QString input = args.at(1);
    const QString output = args.at(2);
    const QString suffix = QFileInfo(output).suffix().toLower();
    if (suffix != QLatin1String("csv") && suffix != QLatin1String("xml")) {
        err() << "unknown output form: " << output << " (use .csv or .xml)\n";
        return 2;
    }
    traceToStderr();
    Morvane::DetectionResultList results;
    try {
        QFile file(input);
        if (!file.open(QIODevice::ReadOnly)) {
            err() << "cannot open " << input << "\n";
            return 1;
        }
        if (!results.SetXmlString(QString::fromUtf8(file.readAll()), true)) {
            err() << input << ": not a readable detection result list\n";
            return 1;
        }
        QDir().mkpath(QFileInfo(output).absolutePath());
        if (!FileHandling().ExportFrequencyStoreList(suffix == QLatin1String("csv"), output, results)) {
            err() << output << ": not written\n";
            return 1;
        }
    } catch (const ORBELIN::ReportException &e) {
        err() << input << ": " << e.GetMessage() << "\n";
        return 1;
    }
    out() << output << ": " << results.GetDetectionResult().size() << " detection results converted, written as "
          << (suffix == QLatin1String("csv") ? "CSV" : "the XML of the converted store list") << "\n";
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() == 1 && (args.at(0) == QLatin1String("--help") || args.at(0) == QLatin1String("-h"))) {
        out() << usageText();
        out().flush();
        return 0;
    }
    if (args.size() < 2)
        return usage();
    const QString command = args.at(0);
    if (command == QLatin1String("export") || command == QLatin1String("import")
        || command == QLatin1String("convert-detections")) {
        const int result = command == QLatin1String("convert-detections") ? convertDetections(args)
                                                                          : csvCommand(command, args);
        out().flush();
        err().flush();
        return result;
    }
    if (command != QLatin1String("convert") && command != QLatin1String("check")
        && command != QLatin1String("print"))
        return usage();
    if (command != QLatin1String("convert") && args.size() != 2)
        return usage();

    FrequencyStoreList list;
    try {
        if (!readList(args.at(1), list)) {
            err() << args.at(1) << ": not a readable frequency store list\n";
            return 1;
        }
        list.Check();
    } catch (const ORBELIN::ReportException &e) {
        err() << args.at(1) << ": " << e.GetMessage() << "\n";
        return 1;
    }
    out() << args.at(1) << ": " << list.GetFrequencyStoreEntry().size() << " entries, check passed\n";
    if (command == QLatin1String("print"))
        print(list);
    int result = 0;
    for (const QString &output : args.mid(2)) {
        bool written = false;
        try {
            written = writeList(output, list);
        } catch (const ORBELIN::ReportException &e) {
            err() << output << ": " << e.GetMessage() << "\n";
        }
        out() << output << ": " << (written ? "written and read back equal" : "FAILED") << "\n";
        if (!written)
            result = 1;
    }
    out().flush();
    return result;
}
