#include "frequencystore/filehandling.h"

#include "frame/exceptions.h"
#include "frame/qtcompat.h"
#include "frame/trace.h"
#include "frequencystore/csvcolumn.h"
#include "frequencystore/csvfileloader.h"

#include <QtCore/QByteArray>
#include <QtCore/QSaveFile>
#include <QtCore/QStringList>
#include <QtCore/QTextStream>
#include <QtCore/QVector>

#include <utility>

namespace Morvane {

namespace {

using ListType = FrequencyStoreListHelper::ListType;

const QString &sourcePath()
{
    static const QString path = QStringLiteral("frequencystore/filehandling");
    return path;
}

// The text of an empty cell.
const QString &emptyCell()
{
    static const QString text = QStringLiteral("---");
    return text;
}

void trace(const QString &text, int line)
{
    if (ErrorHandler::Instance()->GetTraceMask() & ErrorHandler::TraceErrors)
        _Q_Trace(sourcePath(), text, static_cast<unsigned short>(line));
}

// Every trace call stands on one line, so that the line traced is the call's.
#define FILEHANDLING_TRACE(text) trace((text), __LINE__)

// A number as the files write it: fixed, two decimals, no grouping.
QString fixed2(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'f', 2);
}

// The cell of a column in a row. A cell is a text, never the null string: an
// empty cell is an empty text, which the string setters take.
QString cellAt(const CSVColumn *column, int row)
{
    const QStringList *values = column ? column->GetValues() : nullptr;
    if (!values || row < 0 || row >= values->size() || values->at(row).isNull())
        return QStringLiteral("");
    return values->at(row);
}

// Stores a number into the Value of a value record (Frequency, IFBandwidth)
// with its presence bit, past the setter's test: the setter runs with the
// record's validation switched off, and the flag is put back afterwards. The
// value record has no children, so its own flag is all there is to switch.
template <class ValueRecord>
void storeValue(ValueRecord &record, double value)
{
    const bool validate = record.GetValidate();
    record.SetValidate(false);
    record.SetValue(value);
    record.SetValidate(validate);
}

// The columns the notepad, suppress and NOI files have in common.
struct SimpleColumns
{
    const CSVColumn *type = nullptr;
    const CSVColumn *comment = nullptr;
    const CSVColumn *frequency = nullptr;
    const CSVColumn *bandwidth = nullptr;
    const CSVColumn *analogDemod = nullptr;
};

// Reads the whole file, then makes one entry for each row and appends it to
// the list. analogDemod: whether the file has the AnalogDemod column
// (NotePad).
void importSimple(const QString &fileName, FrequencyStoreList &list, bool analogDemod)
{
    CSVFileLoader loader;
    loader.LoadFile(fileName);

    SimpleColumns columns;
    columns.type = loader.GetColumn(QStringLiteral("Type"));
    columns.comment = loader.GetColumn(QStringLiteral("Comment"));
    columns.frequency = loader.GetColumn(QStringLiteral("Frequency"));
    columns.bandwidth = loader.GetColumn(QStringLiteral("IFBandwidth"));
    if (analogDemod)
        columns.analogDemod = loader.GetColumn(QStringLiteral("AnalogDemod"));
    // The rows are counted by the Type column: without it the file is not
    // taken for a list of no rows.
    if (!columns.type || !columns.type->GetValues())
        throw ORBELIN::OrbelinException(QStringLiteral("Data is corrupted. The column 'Type' is missing!"));

    const int rows = int(columns.type->GetValues()->size());
    const bool validate = list.GetValidate();
    for (int row = 0; row < rows; ++row) {
        FrequencyStoreEntry entry;
        entry.SetValidate(validate);

        const QString type = cellAt(columns.type, row);
        if (type.isEmpty())
            throw ORBELIN::OrbelinException(QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!"));
        entry.SetType(type);

        if (columns.comment) {
            const QString comment = cellAt(columns.comment, row);
            if (comment != emptyCell())
                entry.SetComment(comment);
        }
        // Any receiver cell selects the fixed-frequency settings.
        if (columns.frequency)
            storeValue(entry.GetFFM_Settings().GetFrequency(), cellAt(columns.frequency, row).toDouble());
        if (columns.bandwidth)
            storeValue(entry.GetFFM_Settings().GetIFBandwidth(), cellAt(columns.bandwidth, row).toDouble());
        if (columns.analogDemod) {
            FFM_Settings &settings = entry.GetFFM_Settings();
            const QString name = cellAt(columns.analogDemod, row);
            if (name != emptyCell())
                settings.SetAnalogDemod(settings.NameToAnalogDemod(name));
        }

        entry.Check(false);
        list.AppendFrequencyStoreEntry(std::move(entry));
    }
}

} // namespace

FileHandling::FileHandling() = default;
FileHandling::FileHandling(const FileHandling &) = default;
FileHandling &FileHandling::operator=(const FileHandling &) = default;
FileHandling::~FileHandling() = default;

// --- entry points ------------------------------------------------------------

bool FileHandling::IsValidFormat(const QString &fileName)
{
    try {
        FrequencyStoreList list;
        return list.LoadXml(fileName);
    } catch (const ORBELIN::OrbelinException &) {
        return false;
    }
}

void FileHandling::ImportFrequencyStoreList(bool csv, const QString &fileName, FrequencyStoreList &list,
                                            FrequencyStoreListHelper::ListType type)
{
    if (csv)
        ImportCSV(fileName, list, type);
    else
        list.LoadXml(fileName);
}

bool FileHandling::ExportFrequencyStoreList(bool csv, const QString &fileName, FrequencyStoreList &list,
                                            FrequencyStoreListHelper::ListType type)
{
    FileHandling handling;
    FrequencyStoreListHelper helper;
    // The test of the type makes the helper's block; a type outside the
    // table stays unset (-1) and fails in ExportCSV.
    if (helper.IsValidListType(type))
        helper.SetListType(type);
    helper.SetFrequencyStoreList(list);
    if (csv)
        return handling.ExportCSV(fileName, helper);
    return handling.ExportXml(fileName, helper.GetFrequencyStoreList());
}

bool FileHandling::ExportFrequencyStoreList(bool csv, const QString &fileName, DetectionResultList &list)
{
    FileHandling handling;
    FrequencyStoreListHelper helper;
    helper.SetListType(FrequencyStoreListHelper::ListType_DetectionResult);
    if (list.IsUsageSet())
        helper.GetFrequencyStoreList().SetUsage(FrequencyStoreList::Usage(int(list.GetUsage())));
    FrequencyStoreList &converted = helper.GetFrequencyStoreList();
    // The conversion is not there yet. Until it is, its failure is reported
    // as the failure of the writing that follows it, in both forms.
    if (csv) {
        try {
            handling.WriteToFile(fileName, handling.ConvertDetectionResults(list, converted));
        } catch (const ORBELIN::OrbelinException &e) {
            FILEHANDLING_TRACE(QStringLiteral("Error writing file %1. %2: %3").arg(fileName, e.GetExceptionName(), e.GetMessage()));
            return false;
        }
        return true;
    }
    try {
        handling.ConvertDetectionResults(list, converted);
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
    return handling.ExportXml(fileName, converted);
}

bool FileHandling::ImportXml(const QString &fileName, FrequencyStoreList &list)
{
    return list.LoadXml(fileName);
}

bool FileHandling::ImportCSV(const QString &fileName, FrequencyStoreList &list, FrequencyStoreListHelper::ListType type)
{
    FileHandling handling;
    try {
        switch (int(type)) {
        case FrequencyStoreListHelper::ListType_NotePad:
            handling.ImportNotePad(fileName, list);
            return true;
        case FrequencyStoreListHelper::ListType_Suppress:
        case FrequencyStoreListHelper::ListType_NOIFrequencies:
            handling.ImportSuppress(fileName, list);
            return true;
        case FrequencyStoreListHelper::ListType_TargetList:
            handling.ImportTargetList(fileName, list);
            return true;
        case FrequencyStoreListHelper::ListType_DataResults:
            handling.ImportDataResults(fileName, list);
            return true;
        case FrequencyStoreListHelper::ListType_DetectionConventional:
            handling.ImportDetectionConventional(fileName, list);
            return true;
        case FrequencyStoreListHelper::ListType_MemoryScan:
            handling.ImportMemoryScan(fileName, list);
            return true;
        case FrequencyStoreListHelper::ListType_DetectionResult:
            FILEHANDLING_TRACE(QStringLiteral("detection results not imported"));
            return false;
        case FrequencyStoreListHelper::ListType_TransducerList:
            FILEHANDLING_TRACE(QStringLiteral("find application that actually needs transducer settings?"));
            return false;
        default:
            // A type without a case reads as a success, the list untouched.
            return true;
        }
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("Import: Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
}

// --- writing -------------------------------------------------------------------

bool FileHandling::ExportXml(const QString &fileName, FrequencyStoreList &list)
{
    try {
        // SaveXml answers false for a file it cannot write (it throws only
        // for the list's own failures): reported here as a failure of the
        // family, as WriteToFile reports it.
        if (!list.SaveXml(fileName))
            throw ORBELIN::OrbelinException(QStringLiteral("Can't write file: '%1'").arg(fileName));
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
    return true;
}

bool FileHandling::ExportXml(const QString &fileName, const QString &xml)
{
    try {
        WriteToFile(fileName, xml);
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
    return true;
}

bool FileHandling::ExportCSV(const QString &fileName, FrequencyStoreListHelper &helper)
{
    try {
        switch (int(helper.GetListType())) {
        case FrequencyStoreListHelper::ListType_NotePad:
            ExportNotePad(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_Suppress:
        case FrequencyStoreListHelper::ListType_NOIFrequencies:
            ExportNOI(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_TargetList:
            ExportTargetList(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_DataResults:
            ExportDataResults(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_DetectionConventional:
            ExportDetectionConventional(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_MemoryScan:
            ExportMemoryScan(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_DetectionResult:
            ExportDetectionResult(fileName, helper);
            return true;
        case FrequencyStoreListHelper::ListType_TransducerList:
            FILEHANDLING_TRACE(QStringLiteral("find application that actually needs transducer settings?"));
            return false;
        default:
            FILEHANDLING_TRACE(QStringLiteral("ExportCSV: Cannot export frequency store to file as ListType is invalid!!"));
            return false;
        }
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("ExportCSV: Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
}

bool FileHandling::ExportCSV(const QString &fileName, const QString &xml, FrequencyStoreListHelper::ListType type)
{
    Q_UNUSED(type); // deliberately not given to the helper
    try {
        FrequencyStoreListHelper helper;
        helper.GetFrequencyStoreList().SetXmlString(xml);
        ExportCSV(fileName, helper);
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
    return true;
}

void FileHandling::SetCSVItem(const QString &value, QString &line, bool endOfRow)
{
    line += value.isEmpty() ? emptyCell() : value;
    line += QLatin1Char(';');
    if (endOfRow)
        line += QLatin1Char('\n');
}

// UTF-8 without a byte order mark, in text mode. The text is encoded first
// and goes into a temporary file beside the target, which replaces the target
// only when all of it was written: a failure on the way (a full disk, a size
// limit) leaves an existing file as it was. Every byte is accounted for
// before the commit: a short write, or a flush that fails, keeps the
// temporary file from replacing the target, and it is removed.
void FileHandling::WriteToFile(const QString &fileName, const QString &text)
{
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        throw ORBELIN::OrbelinException(QStringLiteral("Can't open file for writing: '%1'").arg(fileName));
    QByteArray bytes;
    {
        QTextStream stream(&bytes, QIODevice::WriteOnly);
        Compat::setUtf8(stream);
        stream << text;
        stream.flush();
    }
    if (file.write(bytes) != bytes.size() || !file.flush() || !file.commit())
        throw ORBELIN::OrbelinException(QStringLiteral("Can't write file: '%1'").arg(fileName));
}

// --- cells -----------------------------------------------------------------------

void FileHandling::AppendType(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(entry.GetType(), line, endOfRow);
}

void FileHandling::AppendComment(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(entry.GetComment(), line, endOfRow);
}

void FileHandling::AppendFrequency(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(fixed2(entry.GetFFM_Settings().GetFrequency().GetValue()), line, endOfRow);
}

void FileHandling::AppendBandwidth(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(fixed2(entry.GetFFM_Settings().GetIFBandwidth().GetValue()), line, endOfRow);
}

void FileHandling::AppendAnalogDemod(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_Settings &settings = entry.GetFFM_Settings();
    SetCSVItem(settings.IsAnalogDemodSet() ? settings.AnalogDemodToName(settings.GetAnalogDemod()) : QString(), line,
               endOfRow);
}

// --- list files ------------------------------------------------------------------------

// The exports work on copies: the entry vector is copied, and each entry again
// (with its validation flag), so that the getters that mark members as present
// change only the copy.

void FileHandling::ExportNotePad(const QString &fileName, FrequencyStoreListHelper &helper)
{
    const QVector<FrequencyStoreEntry> entries =
        static_cast<const FrequencyStoreListHelper &>(helper).GetFrequencyStoreList().GetFrequencyStoreEntry();
    QString text = QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n");
    for (const FrequencyStoreEntry &item : entries) {
        FrequencyStoreEntry entry(item);
        AppendType(entry, text, false);
        AppendComment(entry, text, false);
        AppendFrequency(entry, text, false);
        AppendBandwidth(entry, text, false);
        AppendAnalogDemod(entry, text, true);
    }
    WriteToFile(fileName, text);
}

void FileHandling::ExportNOI(const QString &fileName, FrequencyStoreListHelper &helper)
{
    const QVector<FrequencyStoreEntry> entries =
        static_cast<const FrequencyStoreListHelper &>(helper).GetFrequencyStoreList().GetFrequencyStoreEntry();
    QString text = QStringLiteral("Type;Comment;Frequency;IFBandwidth\n");
    for (const FrequencyStoreEntry &item : entries) {
        FrequencyStoreEntry entry(item);
        AppendType(entry, text, false);
        AppendComment(entry, text, false);
        AppendFrequency(entry, text, false);
        AppendBandwidth(entry, text, true);
    }
    WriteToFile(fileName, text);
}

void FileHandling::ExportTargetList(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of TargetList"));
}

void FileHandling::ExportDataResults(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of DataResults"));
}

void FileHandling::ExportDetectionConventional(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of DetectionConventional"));
}

void FileHandling::ExportMemoryScan(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of MemoryScan"));
}

void FileHandling::ExportDetectionResult(const QString &fileName, FrequencyStoreListHelper &helper)
{
    WriteToFile(fileName, ConvertDetectionResults(helper.GetDetectionResultList(), helper.GetFrequencyStoreList()));
}

void FileHandling::ImportNotePad(const QString &fileName, FrequencyStoreList &list)
{
    importSimple(fileName, list, true);
}

void FileHandling::ImportSuppress(const QString &fileName, FrequencyStoreList &list)
{
    importSimple(fileName, list, false);
}

void FileHandling::ImportNOI(const QString &fileName, FrequencyStoreList &list)
{
    ImportSuppress(fileName, list);
}

void FileHandling::ImportTargetList(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of TargetList"));
}

void FileHandling::ImportDataResults(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of DataResults"));
}

void FileHandling::ImportDetectionConventional(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of DetectionConventional"));
}

void FileHandling::ImportMemoryScan(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of MemoryScan"));
}

QString FileHandling::ConvertDetectionResults(DetectionResultList &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The conversion of detection results"));
}

void FileHandling::NotSupportedYet(const QString &what)
{
    throw ORBELIN::OrbelinException(what + QStringLiteral(" is not supported yet"));
}

} // namespace Morvane
