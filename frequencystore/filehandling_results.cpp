// The data results and conventional detection files: the common columns with
// the entry's result list, or with its level and detection times.
//
// DataResults: header "Type;Comment;Frequency;IFBandwidth;AnalogDemod;
// LockState;SignalTime;Confidence". DetectionConventional: header
// "Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime", without
// AnalogDemod. Neither header has a trailing ";", whereas every cell of a row
// is followed by one: a row has one field more than its header, and a file as
// written here does not import again. That is the format the programs
// reading these files expect, and it stays so.
//
// The file's LockState is the result list's Reason and its SignalTime the
// result list's ResultTime. Times are the text of Converters::ToString,
// "yyyy-MM-ddThh:mm:ss,zzzZ" in UTC, and are read with Converters::ToDateTime;
// a text that is no such time reads as an invalid QDateTime, which is stored
// as it is.

#include "frequencystore/filehandling_p.h"

#include "frame/converters.h"
#include "frame/exceptions.h"

#include <QtCore/QDateTime>

#include <utility>

namespace Morvane {

using namespace filehandling;
using ORBELIN::Converters;

// --- cells -----------------------------------------------------------------------

// The reads go through the const entry: asking for a member does not mark it
// as present.

void FileHandling::AppendLevel(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const FFM_Settings &settings = std::as_const(entry).GetFFM_Settings();
    SetCSVItem(settings.IsLevelSet() ? fixed2(settings.GetLevel()) : QString(), line, endOfRow);
}

void FileHandling::AppendReason(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(std::as_const(entry).GetResultList().GetReason(), line, endOfRow);
}

void FileHandling::AppendResultTime(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const ResultList &results = std::as_const(entry).GetResultList();
    SetCSVItem(results.IsResultTimeSet() ? Converters::ToString(results.GetResultTime()) : QString(), line, endOfRow);
}

// Written whether set or not: an entry without a result list shows the
// member's current value.
void FileHandling::AppendConfidence(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(QStringLiteral("%1").arg(std::as_const(entry).GetResultList().GetConfidence()), line, endOfRow);
}

// Written whether set or not; an invalid (or never set) time has the empty
// text and so writes "---".
void FileHandling::AppendStartTime(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    SetCSVItem(Converters::ToString(std::as_const(entry).GetDetection().GetStartTime()), line, endOfRow);
}

void FileHandling::AppendStopTime(FrequencyStoreEntry &entry, QString &line, bool endOfRow)
{
    const Detection &detection = std::as_const(entry).GetDetection();
    SetCSVItem(detection.IsStopTimeSet() ? Converters::ToString(detection.GetStopTime()) : QString(), line, endOfRow);
}

// --- the files ---------------------------------------------------------------------

void FileHandling::ExportDataResults(const QString &fileName, FrequencyStoreListHelper &helper)
{
    ExportColumns(fileName, helper,
                  QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"),
                  {&FileHandling::AppendType, &FileHandling::AppendComment, &FileHandling::AppendFrequency,
                   &FileHandling::AppendBandwidth, &FileHandling::AppendAnalogDemod, &FileHandling::AppendReason,
                   &FileHandling::AppendResultTime, &FileHandling::AppendConfidence});
}

void FileHandling::ExportDetectionConventional(const QString &fileName, FrequencyStoreListHelper &helper)
{
    ExportColumns(fileName, helper, QStringLiteral("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n"),
                  {&FileHandling::AppendType, &FileHandling::AppendComment, &FileHandling::AppendFrequency,
                   &FileHandling::AppendBandwidth, &FileHandling::AppendLevel, &FileHandling::AppendStartTime,
                   &FileHandling::AppendStopTime});
}

// The result columns, by name, after the notepad columns.
//
// A file with any of LockState, SignalTime and Confidence gives every row a
// result list, also a row whose LockState and SignalTime hold "---": the
// three columns are the result list, as ProfileID and its like are the
// profile of a target list. So a file with LockState or SignalTime and no
// Confidence column gives result lists without their mandatory Confidence,
// and the first row fails the entry's Check.
//
// LockState "---" and SignalTime "---" leave their members unset. Confidence
// knows no placeholder: every cell is read as a number, "---" as 0, and
// stored with its presence bit. The time and the confidence go in past their
// setters' tests.
void FileHandling::ImportDataResults(const QString &fileName, FrequencyStoreList &list)
{
    importRows(fileName, list, true, [](const CSVFileLoader &loader) -> RowFiller {
        const CSVColumn *lockState = loader.GetColumn(QStringLiteral("LockState"));
        const CSVColumn *signalTime = loader.GetColumn(QStringLiteral("SignalTime"));
        const CSVColumn *confidence = loader.GetColumn(QStringLiteral("Confidence"));
        if (!lockState && !signalTime && !confidence)
            return RowFiller();
        return [=](FrequencyStoreEntry &entry, int row) {
            ResultList &results = entry.GetResultList();
            if (lockState) {
                const QString text = cellAt(lockState, row);
                if (text != emptyCell())
                    results.SetReason(text);
            }
            if (signalTime) {
                const QString text = cellAt(signalTime, row);
                if (text != emptyCell()) {
                    const QDateTime time = Converters::ToDateTime(text);
                    pastSetter(results, [&time](ResultList &r) { r.SetResultTime(time); });
                }
            }
            if (confidence) {
                const int value = cellAt(confidence, row).toInt(nullptr, 10);
                pastSetter(results, [value](ResultList &r) { r.SetConfidence(value); });
            }
        };
    });
}

// The level and the detection times, by name, after the columns Type,
// Comment, Frequency and IFBandwidth (this file has no AnalogDemod).
//
// Level "---" leaves the level unset; any other cell is read as a number
// (what is no number reads as 0) and given to SetLevel.
//
// The stop time belongs to the start time: it is read only in a row whose
// StartTime holds a time. A StartTime of "---" skips the row's StopTime too,
// and the row gets no detection. A StartTime cell that is not "---" makes the
// detection present and is stored past the setter's test; the StopTime of the
// row then goes through SetStopTime unless it is "---". A file with a
// StopTime column and no StartTime column so reads no stop times at all; a
// file with StartTime and no StopTime column gives detections with a start
// time only, as an absent column leaves its member alone everywhere else.
void FileHandling::ImportDetectionConventional(const QString &fileName, FrequencyStoreList &list)
{
    importRows(fileName, list, false, [](const CSVFileLoader &loader) -> RowFiller {
        const CSVColumn *level = loader.GetColumn(QStringLiteral("Level"));
        const CSVColumn *startTime = loader.GetColumn(QStringLiteral("StartTime"));
        const CSVColumn *stopTime = loader.GetColumn(QStringLiteral("StopTime"));
        if (!level && !startTime)
            return RowFiller();
        return [=](FrequencyStoreEntry &entry, int row) {
            if (level) {
                const QString text = cellAt(level, row);
                if (text != emptyCell())
                    entry.GetFFM_Settings().SetLevel(text.toDouble());
            }
            if (startTime) {
                const QString start = cellAt(startTime, row);
                if (start != emptyCell()) {
                    Detection &detection = entry.GetDetection();
                    const QDateTime time = Converters::ToDateTime(start);
                    pastSetter(detection, [&time](Detection &d) { d.SetStartTime(time); });
                    if (stopTime) {
                        const QString stop = cellAt(stopTime, row);
                        if (stop != emptyCell())
                            detection.SetStopTime(Converters::ToDateTime(stop));
                    }
                }
            }
        };
    });
}

} // namespace Morvane
