#ifndef MORVANE_FILEHANDLING_H
#define MORVANE_FILEHANDLING_H

#include "frame/morvane_global.h"
#include "frequencystore/records/detectionresultlist.h"
#include "frequencystore/records/frequencystoreentry.h"
#include "frequencystore/records/frequencystorelist.h"
#include "frequencystore/records/frequencystorelisthelper.h"

#include <QtCore/QString>

#include <initializer_list>

namespace Morvane {

class FileHandlingTestAccess;

// The door through which an application reads and writes list files. A list
// goes out and comes in as XML (the list record's own form) or as the
// semicolon-separated CSV file of its list type. The class has no data; an
// instance may be made for one call and keeps nothing.
//
// Failures are not thrown to the caller: the entry points catch the
// ORBELIN::OrbelinException family, trace its text and answer false. A line
// is traced only when bit ErrorHandler::TraceErrors (0x20) of the mask of
// ErrorHandler::Instance() is set, with the source path
// "frequencystore/filehandling" and the line of the call; with the bit clear
// a failure is silent. The XML reading paths (ImportXml, and
// ImportFrequencyStoreList with csv false) catch nothing.
//
// CSV files:
//
// - UTF-8 without a byte order mark, one header line, cells separated by ";",
//   no quoting and no escaping: a ";" or a line end inside a text corrupts
//   its row. An empty cell is written "---". Rows end in one line feed.
// - NotePad: header "Type;Comment;Frequency;IFBandwidth;AnalogDemod;", rows
//   of 5 cells each followed by ";". Suppress and NOIFrequencies: header
//   "Type;Comment;Frequency;IFBandwidth" and rows of 4 cells each followed by
//   ";", so that a row has one field more than the header. Such a file, as
//   this class writes it, does not import again; this is the format the
//   programs that read these files expect, and it stays so.
// - Frequency and IFBandwidth are written with 2 decimals, unit-less, as
//   stored, whether the entry has them or not. On import they are stored
//   straight into the value records past their setters' tests; a cell that is
//   no number (also "---") reads as 0.
//
// Importing:
//
// - The whole file is read before the first entry is made: a file that cannot
//   be opened, is empty, or has one row with the wrong number of fields adds
//   nothing to the list.
// - Each row becomes one FrequencyStoreEntry with the validation setting of
//   the list it goes into. It passes Check(false) and is appended with
//   AppendFrequencyStoreEntry. A row that fails (an empty Type, a cell its
//   setter refuses, the Check or the append) ends the import there: the
//   entries of the rows ahead of it stay in the list, the rows behind it are
//   not looked at, and the result is false.
// - The list is never cleared: entries are added behind those it holds.
// - A file without a "Type" column is refused as a whole with
//   "Data is corrupted. The column 'Type' is missing!": the rows of a file are
//   counted by that column, and a file without it would otherwise pass for a
//   list of no rows. A file with the column and no rows imports as an empty
//   list.
// - ImportCSV of a type without a case (anything outside 0 to 8) answers
//   true and leaves the list as it was; DetectionResult and TransducerList
//   have no import and answer false.
//
// Writing a file: the text is built in memory and written once, through a
// QSaveFile, so that a write that fails or is interrupted leaves an existing
// file as it was. A file that cannot be opened for writing fails with
// "Can't open file for writing: '<name>'", one whose writing or replacing
// fails with "Can't write file: '<name>'".
//
// The other list files:
//
// - TargetList: the notepad columns and the six texts of the entry's profile
//   data; DataResults: the notepad columns with the result list (LockState
//   is its Reason, SignalTime its ResultTime, and Confidence);
//   DetectionConventional: Type, Comment, Frequency, IFBandwidth, the level
//   and the detection times. Their headers have no trailing ";" and every
//   cell of a row is followed by one: as exported they do not import again,
//   as the suppress file.
// - MemoryScan: receiver, detail and direction-finding settings under the
//   file's own column names. The export takes names out of the header as it
//   meets entries without an alarm, without direction finding or without a
//   DF step, and its rows do not end in ";"; files of mixed entries do not
//   import again. The import accepts every header, as it looks each column
//   up by name.
// - DetectionResult: the CSV text of a detection result list
//   (DetectionResultHelper); the DetectionResultList overload of
//   ExportFrequencyStoreList converts the results into store entries and
//   writes that text, or the XML of the converted list.
//
// Each import looks its columns up by name, in any order, and leaves the
// members of absent columns alone; which cells take "---" for an empty one
// is told where each file is read (filehandling_*.cpp).
class MORVANE_EXPORT FileHandling
{
public:
    FileHandling();
    FileHandling(const FileHandling &other);
    FileHandling &operator=(const FileHandling &other);
    virtual ~FileHandling();

    // Whether a fresh FrequencyStoreList loads the file as XML. False, with no
    // trace, for any failure.
    bool IsValidFormat(const QString &fileName);

    // csv true: ImportCSV; csv false: the list's LoadXml. The result is not
    // passed on: a failed CSV import shows only in the trace. What the XML
    // load throws reaches the caller.
    void ImportFrequencyStoreList(bool csv, const QString &fileName, FrequencyStoreList &list,
                                         FrequencyStoreListHelper::ListType type);

    // csv true: the CSV file of type (false, with a trace, for a type outside
    // 0 to 8 or without a CSV export); csv false: the list as XML, whatever
    // the type.
    bool ExportFrequencyStoreList(bool csv, const QString &fileName, FrequencyStoreList &list,
                                         FrequencyStoreListHelper::ListType type);

    // The detection results converted into a store list, written as CSV
    // (csv true) or as the XML of the converted list (csv false).
    bool ExportFrequencyStoreList(bool csv, const QString &fileName, DetectionResultList &list);

    // The list's LoadXml, its result passed on; nothing is caught.
    bool ImportXml(const QString &fileName, FrequencyStoreList &list);

    // The CSV import of the list type.
    bool ImportCSV(const QString &fileName, FrequencyStoreList &list, FrequencyStoreListHelper::ListType type);

private:
    friend class FileHandlingTestAccess;

    bool ExportXml(const QString &fileName, FrequencyStoreList &list);
    bool ExportXml(const QString &fileName, const QString &xml);
    bool ExportCSV(const QString &fileName, FrequencyStoreListHelper &helper);
    // The list of the XML text as CSV. The type is not given to the list, so
    // the export ends at the invalid type and writes nothing; the result is
    // true all the same, false only for a failure that reaches this level.
    bool ExportCSV(const QString &fileName, const QString &xml, FrequencyStoreListHelper::ListType type);

    // Appends the cell value (or "---" when it is empty) and ";" to line, and
    // a line feed when endOfRow is true.
    void SetCSVItem(const QString &value, QString &line, bool endOfRow);
    void WriteToFile(const QString &fileName, const QString &text);

    // One cell of an entry each.
    void AppendType(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendComment(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendFrequency(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendBandwidth(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendAnalogDemod(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendLevel(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendPriority(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendProfileId(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendSignalClass(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendTransmissionSystem(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendProfileName(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendThreatClass(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendReason(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendResultTime(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendConfidence(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendStartTime(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendStopTime(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendAntenna(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendActive(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendAFC(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendAttenuation(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendSquelchState(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendSquelchValue(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendChannelNo(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendAlarm(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendDFMode(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendAveraging(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendLevelThreshold(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendDFBandwidth(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendDFStep(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    void AppendIFStep(FrequencyStoreEntry &entry, QString &line, bool endOfRow);

    // One cell of an entry, as the Append functions give it.
    using Cell = void (FileHandling::*)(FrequencyStoreEntry &entry, QString &line, bool endOfRow);
    // The header, then a row of the cells for each entry of the helper's
    // list, each cell followed by ";" and the last by the line feed too;
    // written once.
    void ExportColumns(const QString &fileName, FrequencyStoreListHelper &helper, const QString &header,
                       std::initializer_list<Cell> cells);

    void ExportNotePad(const QString &fileName, FrequencyStoreListHelper &helper);
    // Suppress and NOIFrequencies files are one format.
    void ExportSuppress(const QString &fileName, FrequencyStoreListHelper &helper) { ExportNOI(fileName, helper); }
    void ExportNOI(const QString &fileName, FrequencyStoreListHelper &helper);
    void ExportTargetList(const QString &fileName, FrequencyStoreListHelper &helper);
    void ExportDataResults(const QString &fileName, FrequencyStoreListHelper &helper);
    void ExportDetectionConventional(const QString &fileName, FrequencyStoreListHelper &helper);
    void ExportMemoryScan(const QString &fileName, FrequencyStoreListHelper &helper);
    void ExportDetectionResult(const QString &fileName, FrequencyStoreListHelper &helper);

    void ImportNotePad(const QString &fileName, FrequencyStoreList &list);
    void ImportSuppress(const QString &fileName, FrequencyStoreList &list);
    void ImportNOI(const QString &fileName, FrequencyStoreList &list);
    void ImportTargetList(const QString &fileName, FrequencyStoreList &list);
    void ImportDataResults(const QString &fileName, FrequencyStoreList &list);
    void ImportDetectionConventional(const QString &fileName, FrequencyStoreList &list);
    void ImportMemoryScan(const QString &fileName, FrequencyStoreList &list);
};

} // namespace Morvane

#endif
