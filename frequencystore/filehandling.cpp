#include "frequencystore/filehandling_p.h"

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

using namespace filehandling;

// --- shared by the list files ----------------------------------------------------

void filehandling::importRows(const QString &fileName, FrequencyStoreList &list, bool analogDemod,
                              const std::function<RowFiller(const CSVFileLoader &)> &extraColumns)
{
    CSVFileLoader loader;
    loader.LoadFile(fileName);

    const CSVColumn *type = loader.GetColumn(QStringLiteral("Type"));
    const CSVColumn *comment = loader.GetColumn(QStringLiteral("Comment"));
    const CSVColumn *frequency = loader.GetColumn(QStringLiteral("Frequency"));
    const CSVColumn *bandwidth = loader.GetColumn(QStringLiteral("IFBandwidth"));
    const CSVColumn *analog = analogDemod ? loader.GetColumn(QStringLiteral("AnalogDemod")) : nullptr;
    const int rows = rowsByType(type);
    const RowFiller extra = extraColumns ? extraColumns(loader) : RowFiller();

    const bool validate = list.GetValidate();
    for (int row = 0; row < rows; ++row) {
        FrequencyStoreEntry entry;
        entry.SetValidate(validate);

        entry.SetType(typeOf(type, row));

        if (comment) {
            const QString text = cellAt(comment, row);
            if (text != emptyCell())
                entry.SetComment(text);
        }
        // Any receiver cell selects the fixed-frequency settings.
        if (frequency)
            storeValue(entry.GetFFM_Settings().GetFrequency(), number(cellView(frequency, row)));
        if (bandwidth)
            storeValue(entry.GetFFM_Settings().GetIFBandwidth(), number(cellView(bandwidth, row)));
        if (analog) {
            FFM_Settings &settings = entry.GetFFM_Settings();
            const QString name = cellAt(analog, row);
            if (name != emptyCell())
                settings.SetAnalogDemod(settings.NameToAnalogDemod(name));
        }
        if (extra)
            extra(entry, row);

        entry.Check(false);
        list.AppendFrequencyStoreEntry(std::move(entry));
    }
}

const QVector<FrequencyStoreEntry> &filehandling::listedEntries(FrequencyStoreListHelper &helper)
{
    return static_cast<const FrequencyStoreListHelper &>(helper).GetFrequencyStoreList().GetFrequencyStoreEntry();
}

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

// The exports work on copies of the entries (forEachExportedEntry).

void FileHandling::ExportColumns(const QString &fileName, FrequencyStoreListHelper &helper, const QString &header,
                                 std::initializer_list<Cell> cells)
{
    QString text = header;
    bool first = true;
    forEachExportedEntry(helper, [&](FrequencyStoreEntry &entry) {
        int left = int(cells.size());
        for (const Cell cell : cells)
            (this->*cell)(entry, text, --left == 0);
        if (first)
            reserveRows(text, header.size(), listedEntries(helper).size());
        first = false;
    });
    WriteToFile(fileName, text);
}

void FileHandling::ExportNotePad(const QString &fileName, FrequencyStoreListHelper &helper)
{
    ExportColumns(fileName, helper, QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"),
                  {&FileHandling::AppendType, &FileHandling::AppendComment, &FileHandling::AppendFrequency,
                   &FileHandling::AppendBandwidth, &FileHandling::AppendAnalogDemod});
}

void FileHandling::ExportNOI(const QString &fileName, FrequencyStoreListHelper &helper)
{
    ExportColumns(fileName, helper, QStringLiteral("Type;Comment;Frequency;IFBandwidth\n"),
                  {&FileHandling::AppendType, &FileHandling::AppendComment, &FileHandling::AppendFrequency,
                   &FileHandling::AppendBandwidth});
}

void FileHandling::ImportNotePad(const QString &fileName, FrequencyStoreList &list)
{
    importRows(fileName, list, true);
}

void FileHandling::ImportSuppress(const QString &fileName, FrequencyStoreList &list)
{
    importRows(fileName, list, false);
}

void FileHandling::ImportNOI(const QString &fileName, FrequencyStoreList &list)
{
    ImportSuppress(fileName, list);
}

} // namespace Morvane
