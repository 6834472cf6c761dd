// The data results file (the notepad columns with the entry's result list)
// and the conventional detection file (the common columns with the level and
// the detection times), written and read through FileHandling with real files
// in a temporary folder.

#include "filehandlingtestsupport.h"

#include <QtCore/QDateTime>

using Morvane::Detection;
using Morvane::FFM_Settings;
using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::ResultList;
using samples::utc;
using namespace MorvaneTest;

namespace {

const QString dataResultsHeader =
    QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n");
const QString conventionalHeader = QStringLiteral("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n");

class DataResultsTest : public FileHandlingTest
{
};

class ConventionalDetectionTest : public FileHandlingTest
{
};

// --- data results: samples ------------------------------------------------------------------------

ResultList result(const QString &reason, const QDateTime &time, int confidence)
{
    ResultList r;
    if (!reason.isNull())
        r.SetReason(reason);
    if (time.isValid())
        r.SetResultTime(time);
    r.SetConfidence(confidence);
    return r;
}

// Three entries: one with everything, one whose result list has neither
// reason nor time, one without a result list.
FrequencyStoreList threeResults()
{
    FrequencyStoreList list;
    FrequencyStoreEntry full = entry(QStringLiteral("Fixed"), QStringLiteral("Tower A"), 7012345.6789, 2400.0,
                                     FFM_Settings::AnalogDemod_FM);
    full.SetResultList(result(QStringLiteral("Locked"), utc(2026, 11, 23, 8, 30, 5, 125), 87));
    list.AppendFrequencyStoreEntry(full);

    FrequencyStoreEntry bare = entry(QStringLiteral("Scan"), QStringLiteral(""), 14.5, 3000.0);
    bare.SetResultList(result(QString(), QDateTime(), -3));
    list.AppendFrequencyStoreEntry(bare);

    list.AppendFrequencyStoreEntry(entry(QStringLiteral("Plain"), QStringLiteral("no result"), 1.0, 2.0,
                                         FFM_Settings::AnalogDemod_CW));
    return list;
}

// --- data results: export ---------------------------------------------------------------------------

TEST_F(DataResultsTest, ExportWritesTheHeaderAndOneRowPerEntryByteForByte)
{
    FrequencyStoreList list = threeResults();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("results.csv"), list, DataResults));
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(QByteArray("Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
                         "Fixed;Tower A;7012345.68;2400.00;FM;Locked;2026-11-23T08:30:05,125Z;87;\n"
                         "Scan;---;14.50;3000.00;---;---;---;-3;\n"
                         "Plain;no result;1.00;2.00;CW;---;---;0;\n"),
              read(path("results.csv")));
    EXPECT_EQ(QStringList{QStringLiteral("results.csv")}, folder());
}

TEST_F(DataResultsTest, ExportHasNoTrailingSemicolonInTheHeaderAndOneFieldMoreInEachRow)
{
    FrequencyStoreList list = threeResults();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("results.csv"), list, DataResults));
    const QList<QByteArray> rows = read(path("results.csv")).split('\n');
    ASSERT_EQ(5, rows.size());
    EXPECT_EQ(8, rows[0].split(';').size());
    EXPECT_FALSE(rows[0].endsWith(';'));
    for (int i = 1; i <= 3; ++i)
        EXPECT_EQ(9, rows[i].split(';').size()) << i;
}

TEST_F(DataResultsTest, ExportOfAnEntryWithoutResultTimeWritesDashInSignalTime)
{
    FrequencyStoreList list;
    FrequencyStoreEntry e = entry(QStringLiteral("T"), QStringLiteral("c"), 1.0, 2.0);
    e.SetResultList(result(QStringLiteral("Lost"), QDateTime(), 12));
    list.AppendFrequencyStoreEntry(e);
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("results.csv"), list, DataResults));
    EXPECT_EQ((dataResultsHeader + QStringLiteral("T;c;1.00;2.00;---;Lost;---;12;\n")).toUtf8(),
              read(path("results.csv")));
}

TEST_F(DataResultsTest, ExportOfAResultTimeInLocalTimeWritesItInUtc)
{
    FrequencyStoreList list;
    FrequencyStoreEntry e = entry(QStringLiteral("T"), QStringLiteral("c"), 1.0, 2.0);
    const QDateTime time = utc(2026, 1, 2, 3, 4, 5, 6);
    e.SetResultList(result(QStringLiteral("R"), time.toOffsetFromUtc(5400), 1));
    list.AppendFrequencyStoreEntry(e);
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("results.csv"), list, DataResults));
    EXPECT_EQ((dataResultsHeader + QStringLiteral("T;c;1.00;2.00;---;R;2026-01-02T03:04:05,006Z;1;\n")).toUtf8(),
              read(path("results.csv")));
}

TEST_F(DataResultsTest, AFileAsExportedDoesNotImportAgain)
{
    FrequencyStoreList list = threeResults();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("results.csv"), list, DataResults));
    FrequencyStoreList target = holdingOne();
    const FrequencyStoreList before = target;
    const bool result = FileHandling().ImportCSV(path("results.csv"), target, DataResults);
    EXPECT_TRUE(refused(result, before, target, texts(), corrupt));
}

TEST_F(DataResultsTest, ExportWorksOnCopiesAndLeavesTheCallersEntriesAlone)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    FrequencyStoreEntry bare;
    bare.SetType(QStringLiteral("Bare"));
    bare.GetShortTime_Settings();
    list.AppendFrequencyStoreEntry(bare);
    list.AppendFrequencyStoreEntry(threeResults().GetFrequencyStoreEntry().first());
    const FrequencyStoreList before = list;

    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("results.csv"), list, DataResults));
    EXPECT_EQ(before, list);
    const FrequencyStoreEntry &kept = entries(list)[0];
    EXPECT_FALSE(kept.IsResultListSet());
    EXPECT_FALSE(kept.IsFFM_SettingsSet());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings, kept.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(read(path("results.csv")).contains("\nBare;---;0.00;0.00;---;---;---;0;\n"));
}

// --- data results: import ------------------------------------------------------------------------

TEST_F(DataResultsTest, ImportReadsRowsOfAsManyFieldsAsTheHeaderHasNames)
{
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
                       "Fixed;Tower A;7012345.68;2400;FM;Locked;2026-11-23T08:30:05,125Z;87\n"
                       "Scan;---;14.5;3000;---;---;---;-3\n",
                       list, DataResults));
    EXPECT_TRUE(lines.empty());
    ASSERT_EQ(3, entries(list).size());

    const FrequencyStoreEntry &first = entries(list)[1];
    EXPECT_EQ(QStringLiteral("Fixed"), first.GetType());
    EXPECT_EQ(QStringLiteral("Tower A"), first.GetComment());
    EXPECT_EQ(7012345.68, first.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(FFM_Settings::AnalogDemod_FM, first.GetFFM_Settings().GetAnalogDemod());
    ASSERT_TRUE(first.IsResultListSet());
    const ResultList &r = first.GetResultList();
    EXPECT_EQ(QStringLiteral("Locked"), r.GetReason());
    EXPECT_TRUE(r.IsResultTimeSet());
    EXPECT_EQ(utc(2026, 11, 23, 8, 30, 5, 125), r.GetResultTime());
    EXPECT_EQ(Qt::UTC, r.GetResultTime().timeSpec());
    EXPECT_EQ(87, r.GetConfidence());

    const FrequencyStoreEntry &second = entries(list)[2];
    EXPECT_FALSE(second.IsCommentSet());
    EXPECT_FALSE(second.GetFFM_Settings().IsAnalogDemodSet());
    ASSERT_TRUE(second.IsResultListSet());
    EXPECT_FALSE(second.GetResultList().IsReasonSet());
    EXPECT_FALSE(second.GetResultList().IsResultTimeSet());
    EXPECT_EQ(-3, second.GetResultList().GetConfidence());
}

TEST_F(DataResultsTest, ConfidenceDashImportsAsZeroAndPresent)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;Confidence\nT;1;2;---\n", list, DataResults));
    ASSERT_EQ(1, entries(list).size());
    ASSERT_TRUE(entries(list)[0].IsResultListSet());
    EXPECT_TRUE(entries(list)[0].GetResultList().IsConfidenceSet());
    EXPECT_EQ(0, entries(list)[0].GetResultList().GetConfidence());
}

TEST_F(DataResultsTest, ConfidenceThatIsNoDecimalIntegerReadsAsZero)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;Confidence\n"
                       "A;1;2;12abc\n"
                       "B;1;2;1.5\n"
                       "C;1;2;0x1F\n"
                       "D;1;2;99999999999\n"
                       "E;1;2;-42\n"
                       "F;1;2;\n",
                       list, DataResults));
    ASSERT_EQ(6, entries(list).size());
    const int expected[] = {0, 0, 0, 0, -42, 0};
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(entries(list)[i].GetResultList().IsConfidenceSet()) << i;
        EXPECT_EQ(expected[i], entries(list)[i].GetResultList().GetConfidence()) << i;
    }
    EXPECT_TRUE(lines.empty());
}

TEST_F(DataResultsTest, AnUnreadableSignalTimeIsStoredAsAnInvalidTime)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;SignalTime;Confidence\n"
                       "A;1;2;yesterday;5\n"
                       "B;1;2;2026-13-40T25:61:61,000Z;5\n"
                       "C;1;2;2026-11-23 08:30:05;5\n",
                       list, DataResults));
    ASSERT_EQ(3, entries(list).size());
    for (const FrequencyStoreEntry &e : entries(list)) {
        EXPECT_TRUE(e.GetResultList().IsResultTimeSet());
        EXPECT_FALSE(e.GetResultList().GetResultTime().isValid());
    }
    // Written again, the invalid time has no text.
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("again.csv"), list, DataResults));
    EXPECT_TRUE(read(path("again.csv")).contains("\nA;---;1.00;2.00;---;---;---;5;\n"));
    EXPECT_TRUE(lines.empty());
}

TEST_F(DataResultsTest, TheColumnsMayStandInAnyOrder)
{
    FrequencyStoreList inOrder;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
                       "Fixed;Tower A;7012345.68;2400;FM;Locked;2026-11-23T08:30:05,125Z;87\n"
                       "Scan;---;14.5;3000;---;---;---;-3\n",
                       inOrder, DataResults));
    FrequencyStoreList shuffled;
    ASSERT_TRUE(import("Confidence;SignalTime;AnalogDemod;Type;IFBandwidth;LockState;Frequency;Comment\n"
                       "87;2026-11-23T08:30:05,125Z;FM;Fixed;2400;Locked;7012345.68;Tower A\n"
                       "-3;---;---;Scan;3000;---;14.5;---\n",
                       shuffled, DataResults));
    ASSERT_EQ(2, entries(shuffled).size());
    EXPECT_EQ(inOrder, shuffled);
    EXPECT_EQ(QStringLiteral("Locked"), entries(shuffled)[0].GetResultList().GetReason());
}

TEST_F(DataResultsTest, AFileWithoutResultColumnsGivesEntriesWithoutAResultList)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;c;1;2;AM;\n", list, DataResults));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_FALSE(entries(list)[0].IsResultListSet());
    EXPECT_EQ(FFM_Settings::AnalogDemod_AM, entries(list)[0].GetFFM_Settings().GetAnalogDemod());
}

TEST_F(DataResultsTest, AbsentColumnsLeaveTheirMembersUnset)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Confidence;IFBandwidth;Type;Frequency\n7;2;T;1\n", list, DataResults));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_FALSE(e.IsCommentSet());
    EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
    ASSERT_TRUE(e.IsResultListSet());
    EXPECT_FALSE(e.GetResultList().IsReasonSet());
    EXPECT_FALSE(e.GetResultList().IsResultTimeSet());
    EXPECT_EQ(7, e.GetResultList().GetConfidence());
}

TEST_F(DataResultsTest, AResultColumnWithoutConfidenceGivesEveryRowAnIncompleteResultList)
{
    // LockState and SignalTime "---" leave their members unset, but the row
    // still gets a result list: without a Confidence column it lacks its
    // mandatory member, and the first row fails the entry's Check.
    for (const char *text : {"Type;Frequency;IFBandwidth;LockState;SignalTime\nA;1;2;---;---\n",
                             "Type;Frequency;IFBandwidth;LockState\nA;1;2;Locked\n"}) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        const bool result = import(text, list, DataResults);
        EXPECT_TRUE(refused(result, before, list, texts(),
                                 QStringLiteral("ResultList: Please set Confidence properly.")))
            << text;
    }
}

TEST_F(DataResultsTest, LockStateAndSignalTimeDashLeaveTheirMembersUnset)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;LockState;SignalTime;Confidence\nA;1;2;---;---;4\n", list,
                       DataResults));
    ASSERT_EQ(1, entries(list).size());
    const ResultList &r = entries(list)[0].GetResultList();
    EXPECT_TRUE(entries(list)[0].IsResultListSet());
    EXPECT_FALSE(r.IsReasonSet());
    EXPECT_FALSE(r.IsResultTimeSet());
    EXPECT_EQ(4, r.GetConfidence());
}

// --- data results: bad input ----------------------------------------------------------------------

TEST_F(DataResultsTest, BadInputRowsWithTheWrongFieldCountAddNothing)
{
    const char *const files[] = {
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
        "A;a;1;2;AM;L;---;1\nB;b;1;2;AM;L;---;1;\n",
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
        "A;a;1;2;AM;L;---;1\nB;b;1;2;AM;L;---\n",
        "Type;Confidence\nA;1\n# late comment\n",
    };
    for (const char *text : files) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        const bool result = import(text, list, DataResults);
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << text;
    }
}

TEST_F(DataResultsTest, BadInputAFileWithoutATypeColumnIsRefusedAsAWhole)
{
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    const bool result = import("Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
                               "a;1;2;AM;L;---;1\n",
                               list, DataResults);
    EXPECT_TRUE(refused(result, before, list, texts(), missingType));
}

TEST_F(DataResultsTest, BadInputAnEmptyTypeEndsTheImportAndKeepsTheRowsAheadOfIt)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;LockState;SignalTime;Confidence\n"
                        "A;a;1;2;AM;L;2026-11-23T08:30:05,125Z;1\n"
                        ";b;1;2;AM;L;---;1\n"
                        "C;c;1;2;AM;L;---;1\n",
                        list, DataResults));
    EXPECT_EQ(QStringList{importError + emptyType}, texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_EQ(utc(2026, 11, 23, 8, 30, 5, 125), entries(list)[1].GetResultList().GetResultTime());
}

TEST_F(DataResultsTest, BadInputNumbersThatAreNoNumbersReadAsZero)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;Confidence\nA;abc;1,5;1\n", list, DataResults));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_TRUE(entries(list)[0].GetFFM_Settings().GetFrequency().IsValueSet());
    EXPECT_EQ(0.0, entries(list)[0].GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(0.0, entries(list)[0].GetFFM_Settings().GetIFBandwidth().GetValue());
}

TEST_F(DataResultsTest, BadInputAnUnknownAnalogDemodNameEndsTheImportThere)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Frequency;IFBandwidth;AnalogDemod;Confidence\n"
                        "A;1;2;FM;1\n"
                        "B;1;2;Stereo;1\n"
                        "C;1;2;AM;1\n",
                        list, DataResults));
    EXPECT_EQ(QStringList{importError + QStringLiteral("enum is not valid (classname=FFM_Settings,membername=m_analogDemod)")},
              texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
}

TEST_F(DataResultsTest, BadInputAnExportedFileOfAnotherListTypeIsRefused)
{
    FrequencyStoreList source = threeResults();
    for (ListType type : {Suppress, TargetList, DetectionConventional}) {
        lines.clear();
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("other.csv"), source, type)) << int(type);
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        bool result = true;
        EXPECT_NO_THROW(result = FileHandling().ImportCSV(path("other.csv"), list, DataResults));
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << int(type);
    }
}

TEST_F(DataResultsTest, AConventionalDetectionFileInTheAcceptedFormLoadsOnlyTheCommonColumns)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n"
                       "A;a;1;2;-70;2026-11-23T08:30:05,125Z;---\n",
                       list, DataResults));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_FALSE(entries(list)[0].IsResultListSet());
    EXPECT_FALSE(entries(list)[0].IsDetectionSet());
    EXPECT_FALSE(entries(list)[0].GetFFM_Settings().IsLevelSet());
}

// --- conventional detection: samples -------------------------------------------------------------------

Detection detection(const QDateTime &start, const QDateTime &stop)
{
    Detection d;
    if (start.isValid())
        d.SetStartTime(start);
    if (stop.isValid())
        d.SetStopTime(stop);
    return d;
}

// Four entries: one with level, start and stop; one with a start time only
// and no level; one without a detection; one with a detection without start
// time.
FrequencyStoreList fourDetections()
{
    FrequencyStoreList list;
    list.SetValidate(false);
    FrequencyStoreEntry full = entry(QStringLiteral("Fixed"), QStringLiteral("Tower A"), 7012345.6789, 2400.0,
                                     FFM_Settings::AnalogDemod_FM);
    full.GetFFM_Settings().SetLevel(-73.456);
    full.SetDetection(detection(utc(2026, 11, 23, 8, 30, 0, 125), utc(2026, 11, 23, 8, 31, 0, 900)));
    list.AppendFrequencyStoreEntry(full);

    FrequencyStoreEntry started = entry(QStringLiteral("Scan"), QStringLiteral(""), 14.5, 3000.0);
    started.SetDetection(detection(utc(1999, 12, 31, 23, 59, 59, 999), QDateTime()));
    list.AppendFrequencyStoreEntry(started);

    FrequencyStoreEntry plain = entry(QStringLiteral("Plain"), QStringLiteral("none"), 1.0, 2.0);
    plain.GetFFM_Settings().SetLevel(0.0);
    list.AppendFrequencyStoreEntry(plain);

    FrequencyStoreEntry stopOnly = entry(QStringLiteral("Stop"), QStringLiteral("stop only"), 3.0, 4.0);
    stopOnly.SetDetection(detection(QDateTime(), utc(2026, 1, 1, 0, 0, 0, 0)));
    list.AppendFrequencyStoreEntry(stopOnly);
    return list;
}

// --- conventional detection: export --------------------------------------------------------------------

TEST_F(ConventionalDetectionTest, ExportWritesTheHeaderAndOneRowPerEntryByteForByte)
{
    FrequencyStoreList list = fourDetections();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("detections.csv"), list, DetectionConventional));
    EXPECT_TRUE(lines.empty());
    // No AnalogDemod column; a detection without start time writes "---".
    EXPECT_EQ(QByteArray("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n"
                         "Fixed;Tower A;7012345.68;2400.00;-73.46;2026-11-23T08:30:00,125Z;2026-11-23T08:31:00,900Z;\n"
                         "Scan;---;14.50;3000.00;---;1999-12-31T23:59:59,999Z;---;\n"
                         "Plain;none;1.00;2.00;0.00;---;---;\n"
                         "Stop;stop only;3.00;4.00;---;---;2026-01-01T00:00:00,000Z;\n"),
              read(path("detections.csv")));
}

TEST_F(ConventionalDetectionTest, ExportHasNoTrailingSemicolonInTheHeaderAndOneFieldMoreInEachRow)
{
    FrequencyStoreList list = fourDetections();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("detections.csv"), list, DetectionConventional));
    const QList<QByteArray> rows = read(path("detections.csv")).split('\n');
    ASSERT_EQ(6, rows.size());
    EXPECT_EQ(7, rows[0].split(';').size());
    EXPECT_FALSE(rows[0].endsWith(';'));
    for (int i = 1; i <= 4; ++i)
        EXPECT_EQ(8, rows[i].split(';').size()) << i;
}

TEST_F(ConventionalDetectionTest, AFileAsExportedDoesNotImportAgain)
{
    FrequencyStoreList list = fourDetections();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("detections.csv"), list, DetectionConventional));
    FrequencyStoreList target = holdingOne();
    const FrequencyStoreList before = target;
    const bool result = FileHandling().ImportCSV(path("detections.csv"), target, DetectionConventional);
    EXPECT_TRUE(refused(result, before, target, texts(), corrupt));
}

TEST_F(ConventionalDetectionTest, AnEmptyListWritesJustTheHeader)
{
    FrequencyStoreList list;
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("empty.csv"), list, DetectionConventional));
    EXPECT_EQ(conventionalHeader.toUtf8(), read(path("empty.csv")));
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("empty2.csv"), list, DataResults));
    EXPECT_EQ(dataResultsHeader.toUtf8(), read(path("empty2.csv")));
    FrequencyStoreList target = holdingOne();
    const FrequencyStoreList before = target;
    EXPECT_TRUE(FileHandling().ImportCSV(path("empty.csv"), target, DetectionConventional));
    EXPECT_TRUE(FileHandling().ImportCSV(path("empty2.csv"), target, DataResults));
    EXPECT_EQ(before, target);
    EXPECT_TRUE(lines.empty());
}

TEST_F(ConventionalDetectionTest, ExportWorksOnCopiesAndLeavesTheCallersEntriesAlone)
{
    FrequencyStoreList list = fourDetections();
    FrequencyStoreEntry bare;
    bare.SetType(QStringLiteral("Bare"));
    bare.GetShortTime_Settings();
    list.AppendFrequencyStoreEntry(bare);
    const FrequencyStoreList before = list;

    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("detections.csv"), list, DetectionConventional));
    EXPECT_EQ(before, list);
    EXPECT_FALSE(entries(list)[2].IsDetectionSet());
    EXPECT_FALSE(entries(list)[3].GetDetection().IsStartTimeSet());
    const FrequencyStoreEntry &kept = entries(list)[4];
    EXPECT_FALSE(kept.IsDetectionSet());
    EXPECT_FALSE(kept.IsFFM_SettingsSet());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings, kept.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(read(path("detections.csv")).endsWith("\nBare;---;0.00;0.00;---;---;---;\n"));
}

// --- conventional detection: import --------------------------------------------------------------------

TEST_F(ConventionalDetectionTest, ImportReadsRowsOfAsManyFieldsAsTheHeaderHasNames)
{
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n"
                       "Fixed;Tower A;7012345.68;2400;-73.46;2026-11-23T08:30:00,125Z;2026-11-23T08:31:00,900Z\n"
                       "Scan;---;14.5;3000;---;1999-12-31T23:59:59,999Z;---\n"
                       "Plain;none;1;2;0;---;---\n",
                       list, DetectionConventional));
    EXPECT_TRUE(lines.empty());
    ASSERT_EQ(4, entries(list).size());

    const FrequencyStoreEntry &first = entries(list)[1];
    EXPECT_EQ(QStringLiteral("Tower A"), first.GetComment());
    EXPECT_EQ(2400.0, first.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_TRUE(first.GetFFM_Settings().IsLevelSet());
    EXPECT_EQ(-73.46, first.GetFFM_Settings().GetLevel());
    ASSERT_TRUE(first.IsDetectionSet());
    EXPECT_EQ(utc(2026, 11, 23, 8, 30, 0, 125), first.GetDetection().GetStartTime());
    EXPECT_EQ(utc(2026, 11, 23, 8, 31, 0, 900), first.GetDetection().GetStopTime());

    const FrequencyStoreEntry &second = entries(list)[2];
    EXPECT_FALSE(second.IsCommentSet());
    EXPECT_FALSE(second.GetFFM_Settings().IsLevelSet());
    ASSERT_TRUE(second.IsDetectionSet());
    EXPECT_EQ(utc(1999, 12, 31, 23, 59, 59, 999), second.GetDetection().GetStartTime());
    EXPECT_FALSE(second.GetDetection().IsStopTimeSet());

    const FrequencyStoreEntry &third = entries(list)[3];
    EXPECT_TRUE(third.GetFFM_Settings().IsLevelSet());
    EXPECT_EQ(0.0, third.GetFFM_Settings().GetLevel());
    // A start time of "---" is no time handled: no detection.
    EXPECT_FALSE(third.IsDetectionSet());
}

TEST_F(ConventionalDetectionTest, ARowWithStartTimeDashAndARealStopTimeLosesTheStopTime)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;StartTime;StopTime\n"
                       "A;1;2;---;2026-11-23T08:31:00,900Z\n"
                       "B;1;2;2026-11-23T08:30:00,000Z;2026-11-23T08:31:00,900Z\n",
                       list, DetectionConventional));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_FALSE(entries(list)[0].IsDetectionSet());
    EXPECT_FALSE(entries(list)[0].GetDetection().IsStopTimeSet());
    EXPECT_TRUE(entries(list)[1].GetDetection().IsStopTimeSet());
    EXPECT_EQ(utc(2026, 11, 23, 8, 31, 0, 900), entries(list)[1].GetDetection().GetStopTime());
}

TEST_F(ConventionalDetectionTest, LevelDashStaysUnsetAndALevelThatIsNoNumberReadsAsZero)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;Level\nA;1;2;---\nB;1;2;loud\nC;1;2;1e2\nD;1;2;\n", list,
                       DetectionConventional));
    ASSERT_EQ(4, entries(list).size());
    EXPECT_FALSE(entries(list)[0].GetFFM_Settings().IsLevelSet());
    EXPECT_TRUE(entries(list)[1].GetFFM_Settings().IsLevelSet());
    EXPECT_EQ(0.0, entries(list)[1].GetFFM_Settings().GetLevel());
    EXPECT_EQ(100.0, entries(list)[2].GetFFM_Settings().GetLevel());
    EXPECT_TRUE(entries(list)[3].GetFFM_Settings().IsLevelSet());
    EXPECT_EQ(0.0, entries(list)[3].GetFFM_Settings().GetLevel());
    for (const FrequencyStoreEntry &e : entries(list))
        EXPECT_FALSE(e.IsDetectionSet());
}

TEST_F(ConventionalDetectionTest, AnAnalogDemodColumnIsNotRead)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;AnalogDemod;Level\nA;1;2;Bogus;-5\nB;1;2;FM;-6\n", list,
                       DetectionConventional));
    ASSERT_EQ(2, entries(list).size());
    for (const FrequencyStoreEntry &e : entries(list))
        EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_EQ(-6.0, entries(list)[1].GetFFM_Settings().GetLevel());
    EXPECT_TRUE(lines.empty());
}

TEST_F(ConventionalDetectionTest, TheColumnsMayStandInAnyOrder)
{
    FrequencyStoreList inOrder;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n"
                       "Fixed;Tower A;7012345.68;2400;-73.46;2026-11-23T08:30:00,125Z;2026-11-23T08:31:00,900Z\n"
                       "Scan;---;14.5;3000;---;---;2026-11-23T08:31:00,900Z\n",
                       inOrder, DetectionConventional));
    FrequencyStoreList shuffled;
    ASSERT_TRUE(import("StopTime;Level;Type;StartTime;IFBandwidth;Comment;Frequency\n"
                       "2026-11-23T08:31:00,900Z;-73.46;Fixed;2026-11-23T08:30:00,125Z;2400;Tower A;7012345.68\n"
                       "2026-11-23T08:31:00,900Z;---;Scan;---;3000;---;14.5\n",
                       shuffled, DetectionConventional));
    ASSERT_EQ(2, entries(shuffled).size());
    EXPECT_EQ(inOrder, shuffled);
    EXPECT_EQ(utc(2026, 11, 23, 8, 31, 0, 900), entries(shuffled)[0].GetDetection().GetStopTime());
    EXPECT_FALSE(entries(shuffled)[1].IsDetectionSet());
}

TEST_F(ConventionalDetectionTest, AFileWithStartTimeAndNoStopTimeColumnGivesStartTimesOnly)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;StartTime\nA;1;2;2026-11-23T08:30:00,000Z\n", list,
                       DetectionConventional));
    ASSERT_EQ(1, entries(list).size());
    ASSERT_TRUE(entries(list)[0].IsDetectionSet());
    EXPECT_EQ(utc(2026, 11, 23, 8, 30, 0, 0), entries(list)[0].GetDetection().GetStartTime());
    EXPECT_FALSE(entries(list)[0].GetDetection().IsStopTimeSet());
}

TEST_F(ConventionalDetectionTest, AFileWithStopTimeAndNoStartTimeColumnReadsNoStopTimes)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;StopTime\nA;1;2;2026-11-23T08:30:00,000Z\n", list,
                       DetectionConventional));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_FALSE(entries(list)[0].IsDetectionSet());
    EXPECT_FALSE(entries(list)[0].GetDetection().IsStopTimeSet());
}

TEST_F(ConventionalDetectionTest, UnreadableTimesAreStoredAsInvalidTimes)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;StartTime;StopTime\n"
                       "A;1;2;soon;later\n"
                       "B;1;2;2026-11-23T08:30:00,000Z;2026-02-30T08:30:00,000Z\n",
                       list, DetectionConventional));
    ASSERT_EQ(2, entries(list).size());
    const Detection &a = entries(list)[0].GetDetection();
    EXPECT_TRUE(entries(list)[0].IsDetectionSet());
    EXPECT_TRUE(a.IsStartTimeSet());
    EXPECT_FALSE(a.GetStartTime().isValid());
    EXPECT_TRUE(a.IsStopTimeSet());
    EXPECT_FALSE(a.GetStopTime().isValid());
    const Detection &b = entries(list)[1].GetDetection();
    EXPECT_TRUE(b.GetStartTime().isValid());
    EXPECT_TRUE(b.IsStopTimeSet());
    EXPECT_FALSE(b.GetStopTime().isValid());
    EXPECT_TRUE(lines.empty());
}

// --- conventional detection: bad input -----------------------------------------------------------------

TEST_F(ConventionalDetectionTest, BadInputRowsWithTheWrongFieldCountAddNothing)
{
    const char *const files[] = {
        "Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\nA;a;1;2;---;---;---\nB;b;1;2;---;---;---;\n",
        "Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\nA;a;1;2;---;---;---\nB;b;1;2;---;---\n",
        "Type;Level\nA;1\n# late comment\n",
    };
    for (const char *text : files) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        const bool result = import(text, list, DetectionConventional);
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << text;
    }
}

TEST_F(ConventionalDetectionTest, BadInputAFileWithoutATypeColumnIsRefusedAsAWhole)
{
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    const bool result = import("Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\na;1;2;---;---;---\n", list,
                               DetectionConventional);
    EXPECT_TRUE(refused(result, before, list, texts(), missingType));
}

TEST_F(ConventionalDetectionTest, BadInputAnEmptyTypeEndsTheImportAndKeepsTheRowsAheadOfIt)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;Level;StartTime;StopTime\n"
                        "A;a;1;2;-1;2026-11-23T08:30:00,000Z;---\n"
                        ";b;1;2;-2;---;---\n"
                        "C;c;1;2;-3;---;---\n",
                        list, DetectionConventional));
    EXPECT_EQ(QStringList{importError + emptyType}, texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_EQ(-1.0, entries(list)[1].GetFFM_Settings().GetLevel());
}

TEST_F(ConventionalDetectionTest, BadInputARowThatFailsItsCheckKeepsTheRowsAheadOfIt)
{
    // Without IFBandwidth the settings are incomplete.
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Frequency;Level;StartTime\nA;1;-1;2026-11-23T08:30:00,000Z\n", list,
                        DetectionConventional));
    EXPECT_EQ(QStringList{importError
                          + QStringLiteral("FrequencyStoreEntry:Check failed. The mandatory member m_fFM_Settings is not "
                                           "set or mandatory data of the member is not set.")},
              texts());
    EXPECT_EQ(1, entries(list).size());
}

TEST_F(ConventionalDetectionTest, BadInputAnExportedFileOfAnotherListTypeIsRefused)
{
    FrequencyStoreList source = fourDetections();
    for (ListType type : {Suppress, TargetList, DataResults}) {
        lines.clear();
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("other.csv"), source, type)) << int(type);
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        bool result = true;
        EXPECT_NO_THROW(result = FileHandling().ImportCSV(path("other.csv"), list, DetectionConventional));
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << int(type);
    }
}

TEST_F(ConventionalDetectionTest, BadInputABinaryFile)
{
    const char raw[] = "Type;StartTime\n\x89PNG\r\n\x1a\n\0\0\0\rIHDR;\xff\xfe\n";
    QByteArray bytes(raw, int(sizeof(raw)) - 1);
    for (int i = 0; i < 2000; ++i)
        bytes.append(char((i * 7919) % 256));
    for (ListType type : {DataResults, DetectionConventional}) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        bool result = true;
        EXPECT_NO_THROW(result = import(bytes, list, type));
        EXPECT_FALSE(result);
        EXPECT_EQ(before, list);
        ASSERT_EQ(1, int(lines.size()));
        EXPECT_TRUE(lines[0].text.startsWith(importError));
    }
}

} // namespace
