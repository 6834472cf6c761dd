// The target list file: the notepad columns and the six texts of an entry's
// profile data, written and read through FileHandling with real files in a
// temporary folder.

#include "filehandlingtestsupport.h"

#include <QtCore/QFileInfo>

using Morvane::FFM_Settings;
using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::Profile_Data;
using namespace MorvaneTest;

namespace {

const QString targetListHeader = QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;"
                                                "SignalClass;TransmissionSystem;ProfileName;ThreatClass\n");

class TargetListTest : public FileHandlingTest
{
};

Profile_Data profile(const QString &priority, const QString &id, const QString &signalClass,
                     const QString &transmissionSystem, const QString &name, const QString &threatClass)
{
    Profile_Data p;
    if (!priority.isNull())
        p.SetPriority(priority);
    p.SetProfileID(id);
    p.SetSignalClass(signalClass);
    p.SetTransmissionSystem(transmissionSystem);
    p.SetProfileName(name);
    if (!threatClass.isNull())
        p.SetThreatClass(threatClass);
    return p;
}

// Three entries: one with everything, one with a profile without Priority
// and ThreatClass and an empty comment, one without a profile.
FrequencyStoreList threeTargets()
{
    FrequencyStoreList list;
    FrequencyStoreEntry full = entry(QStringLiteral("Fixed"), QStringLiteral("Naval HQ"), 8416512.3456, 2999.996,
                                     FFM_Settings::AnalogDemod_USB);
    full.SetProfile_Data(profile(QStringLiteral("High"), QStringLiteral("P-17"), QStringLiteral("Voice"),
                                 QStringLiteral("SSB"), QStringLiteral("Harbour net"), QStringLiteral("Red")));
    list.AppendFrequencyStoreEntry(full);

    FrequencyStoreEntry partial = entry(QStringLiteral("Scan"), QStringLiteral(""), 5505000.0, 3000.0,
                                        FFM_Settings::AnalogDemod_AM);
    partial.SetProfile_Data(profile(QString(), QStringLiteral("P-2"), QStringLiteral("Data"),
                                    QString::fromUtf8("STANAG 4285 \xc3\xa9t\xc3\xa9"), QStringLiteral("Relay"),
                                    QString()));
    list.AppendFrequencyStoreEntry(partial);

    list.AppendFrequencyStoreEntry(entry(QStringLiteral("Plain"), QStringLiteral("no profile"), 14.5, 1.0));
    return list;
}

// --- export ----------------------------------------------------------------------------------------

TEST_F(TargetListTest, ExportWritesTheHeaderAndOneRowPerEntryByteForByte)
{
    FrequencyStoreList list = threeTargets();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("targets.csv"), list, TargetList));
    EXPECT_TRUE(lines.empty());
    const QByteArray expected("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                              "TransmissionSystem;ProfileName;ThreatClass\n"
                              "Fixed;Naval HQ;8416512.35;3000.00;USB;High;P-17;Voice;SSB;Harbour net;Red;\n"
                              "Scan;---;5505000.00;3000.00;AM;---;P-2;Data;STANAG 4285 \xc3\xa9t\xc3\xa9;Relay;---;\n"
                              "Plain;no profile;14.50;1.00;---;---;---;---;---;---;---;\n");
    EXPECT_EQ(expected, read(path("targets.csv")));
    EXPECT_EQ(QStringList{QStringLiteral("targets.csv")}, folder());
}

TEST_F(TargetListTest, ExportHasNoTrailingSemicolonInTheHeaderAndOneFieldMoreInEachRow)
{
    FrequencyStoreList list = threeTargets();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("targets.csv"), list, TargetList));
    const QList<QByteArray> rows = read(path("targets.csv")).split('\n');
    ASSERT_EQ(5, rows.size()); // header, three rows, nothing after the last line feed
    EXPECT_FALSE(rows[0].endsWith(';'));
    EXPECT_EQ(11, rows[0].split(';').size());
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(rows[i].endsWith(';')) << i;
        EXPECT_EQ(12, rows[i].split(';').size()) << i;
    }
    EXPECT_TRUE(rows[4].isEmpty());
}

TEST_F(TargetListTest, AnEmptyListWritesJustTheHeader)
{
    FrequencyStoreList list;
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("empty.csv"), list, TargetList));
    EXPECT_EQ(targetListHeader.toUtf8(), read(path("empty.csv")));
    // The header alone reads back as no rows.
    FrequencyStoreList target = holdingOne();
    const FrequencyStoreList before = target;
    EXPECT_TRUE(FileHandling().ImportCSV(path("empty.csv"), target, TargetList));
    EXPECT_EQ(before, target);
    EXPECT_TRUE(lines.empty());
}

TEST_F(TargetListTest, AFileAsExportedDoesNotImportAgain)
{
    FrequencyStoreList list = threeTargets();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("targets.csv"), list, TargetList));
    FrequencyStoreList target = holdingOne();
    const FrequencyStoreList before = target;
    const bool result = FileHandling().ImportCSV(path("targets.csv"), target, TargetList);
    EXPECT_TRUE(refused(result, before, target, texts(), corrupt));
}

TEST_F(TargetListTest, ExportWorksOnCopiesAndLeavesTheCallersEntriesAlone)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    FrequencyStoreEntry bare;
    bare.SetType(QStringLiteral("Bare"));
    bare.GetShortTime_Settings();
    list.AppendFrequencyStoreEntry(bare);
    list.AppendFrequencyStoreEntry(threeTargets().GetFrequencyStoreEntry().first());
    const FrequencyStoreList before = list;

    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("targets.csv"), list, TargetList));
    EXPECT_EQ(before, list);
    const FrequencyStoreEntry &kept = entries(list)[0];
    EXPECT_FALSE(kept.IsProfile_DataSet());
    EXPECT_FALSE(kept.IsFFM_SettingsSet());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings, kept.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(read(path("targets.csv")).contains("\nBare;---;0.00;0.00;---;---;---;---;---;---;---;\n"));
}

// --- import of the accepted form -------------------------------------------------------------------

TEST_F(TargetListTest, ImportReadsRowsOfAsManyFieldsAsTheHeaderHasNames)
{
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                       "TransmissionSystem;ProfileName;ThreatClass\n"
                       "Fixed;Naval HQ;8416512.35;3000;USB;High;P-17;Voice;SSB;Harbour net;Red\n"
                       "Scan;---;5505000.00;3000.00;AM;Low;P-2;Data;STANAG 4285;Relay;Amber\n",
                       list, TargetList));
    EXPECT_TRUE(lines.empty());
    ASSERT_EQ(3, entries(list).size());
    EXPECT_EQ(QStringLiteral("Old"), entries(list)[0].GetType());

    const FrequencyStoreEntry &first = entries(list)[1];
    EXPECT_EQ(QStringLiteral("Fixed"), first.GetType());
    EXPECT_EQ(QStringLiteral("Naval HQ"), first.GetComment());
    EXPECT_EQ(8416512.35, first.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(3000.0, first.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_EQ(FFM_Settings::AnalogDemod_USB, first.GetFFM_Settings().GetAnalogDemod());
    ASSERT_TRUE(first.IsProfile_DataSet());
    const Profile_Data &p = first.GetProfile_Data();
    EXPECT_EQ(QStringLiteral("High"), p.GetPriority());
    EXPECT_EQ(QStringLiteral("P-17"), p.GetProfileID());
    EXPECT_EQ(QStringLiteral("Voice"), p.GetSignalClass());
    EXPECT_EQ(QStringLiteral("SSB"), p.GetTransmissionSystem());
    EXPECT_EQ(QStringLiteral("Harbour net"), p.GetProfileName());
    EXPECT_EQ(QStringLiteral("Red"), p.GetThreatClass());
    EXPECT_FALSE(p.IsObjectNameSet());
    EXPECT_FALSE(p.IsPointOfInterestSet());

    const FrequencyStoreEntry &second = entries(list)[2];
    EXPECT_FALSE(second.IsCommentSet());
    EXPECT_EQ(QStringLiteral("Amber"), second.GetProfile_Data().GetThreatClass());
    EXPECT_EQ(QStringLiteral("STANAG 4285"), second.GetProfile_Data().GetTransmissionSystem());
}

TEST_F(TargetListTest, ImportReadsRowsWithTrailingSemicolonUnderAHeaderWithOne)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                       "TransmissionSystem;ProfileName;ThreatClass;\n"
                       "Fixed;Naval HQ;1.00;2.00;USB;High;P-17;Voice;SSB;Harbour net;Red;\n",
                       list, TargetList));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_EQ(QStringLiteral("Red"), entries(list)[0].GetProfile_Data().GetThreatClass());
    // What was written from the same entry is what was read, but for the
    // header's trailing ";".
    FrequencyStoreList again;
    again.AppendFrequencyStoreEntry(entries(list)[0]);
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("again.csv"), again, TargetList));
    EXPECT_EQ(QByteArray("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                         "TransmissionSystem;ProfileName;ThreatClass\n"
                         "Fixed;Naval HQ;1.00;2.00;USB;High;P-17;Voice;SSB;Harbour net;Red;\n"),
              read(path("again.csv")));
}

TEST_F(TargetListTest, PriorityAndThreatClassDashStayUnsetWhereasProfileIDTakesTheDash)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                       "TransmissionSystem;ProfileName;ThreatClass\n"
                       "T;c;1;2;---;---;---;---;---;---;---\n",
                       list, TargetList));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    ASSERT_TRUE(e.IsProfile_DataSet());
    const Profile_Data &p = e.GetProfile_Data();
    EXPECT_FALSE(p.IsPrioritySet());
    EXPECT_FALSE(p.IsThreatClassSet());
    EXPECT_TRUE(p.IsProfileIDSet());
    EXPECT_EQ(QStringLiteral("---"), p.GetProfileID());
    // The other three know no placeholder either.
    EXPECT_EQ(QStringLiteral("---"), p.GetSignalClass());
    EXPECT_EQ(QStringLiteral("---"), p.GetTransmissionSystem());
    EXPECT_EQ(QStringLiteral("---"), p.GetProfileName());
    EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
}

TEST_F(TargetListTest, EmptyProfileCellsAreStoredAsEmptyTexts)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Priority;ProfileID;SignalClass;TransmissionSystem;ProfileName;ThreatClass;Frequency;"
                       "IFBandwidth\n"
                       "T;;;;;;;1;2\n",
                       list, TargetList));
    ASSERT_EQ(1, entries(list).size());
    const Profile_Data &p = entries(list)[0].GetProfile_Data();
    for (bool set : {p.IsPrioritySet(), p.IsProfileIDSet(), p.IsSignalClassSet(), p.IsTransmissionSystemSet(),
                     p.IsProfileNameSet(), p.IsThreatClassSet()})
        EXPECT_TRUE(set);
    EXPECT_TRUE(p.GetPriority().isEmpty());
    EXPECT_FALSE(p.GetPriority().isNull());
    EXPECT_TRUE(p.GetProfileID().isEmpty());
    EXPECT_FALSE(p.GetProfileID().isNull());
}

TEST_F(TargetListTest, AFileWithoutPriorityAndThreatClassGivesEntriesWithTheOtherMembersOnly)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;ProfileID;SignalClass;TransmissionSystem;"
                       "ProfileName\n"
                       "T;c;1;2;FM;P-1;Voice;SSB;Name\n"
                       "U;d;3;4;AM;P-2;Data;PSK;Other\n",
                       list, TargetList));
    ASSERT_EQ(2, entries(list).size());
    for (const FrequencyStoreEntry &e : entries(list)) {
        ASSERT_TRUE(e.IsProfile_DataSet());
        EXPECT_FALSE(e.GetProfile_Data().IsPrioritySet());
        EXPECT_FALSE(e.GetProfile_Data().IsThreatClassSet());
        EXPECT_TRUE(e.GetProfile_Data().HasData());
    }
    EXPECT_EQ(QStringLiteral("P-2"), entries(list)[1].GetProfile_Data().GetProfileID());
    EXPECT_EQ(QStringLiteral("Other"), entries(list)[1].GetProfile_Data().GetProfileName());
    EXPECT_EQ(FFM_Settings::AnalogDemod_AM, entries(list)[1].GetFFM_Settings().GetAnalogDemod());
}

TEST_F(TargetListTest, TheColumnsMayStandInAnyOrder)
{
    FrequencyStoreList inOrder;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                       "TransmissionSystem;ProfileName;ThreatClass\n"
                       "Fixed;Naval HQ;8416512.35;3000.00;USB;High;P-17;Voice;SSB;Harbour net;Red\n"
                       "Scan;---;5505000.00;3000.00;AM;---;P-2;Data;STANAG;Relay;---\n",
                       inOrder, TargetList));
    FrequencyStoreList shuffled;
    ASSERT_TRUE(import("ThreatClass;ProfileName;IFBandwidth;Priority;Type;SignalClass;AnalogDemod;ProfileID;Comment;"
                       "TransmissionSystem;Frequency\n"
                       "Red;Harbour net;3000.00;High;Fixed;Voice;USB;P-17;Naval HQ;SSB;8416512.35\n"
                       "---;Relay;3000.00;---;Scan;Data;AM;P-2;---;STANAG;5505000.00\n",
                       shuffled, TargetList));
    ASSERT_EQ(2, entries(shuffled).size());
    EXPECT_EQ(inOrder, shuffled);
    EXPECT_EQ(QStringLiteral("Harbour net"), entries(shuffled)[0].GetProfile_Data().GetProfileName());
    EXPECT_FALSE(entries(shuffled)[1].GetProfile_Data().IsPrioritySet());
    EXPECT_TRUE(lines.empty());
}

TEST_F(TargetListTest, AFileWithoutProfileColumnsGivesEntriesWithoutAProfile)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;c;1;2;AM;\n", list, TargetList));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_FALSE(entries(list)[0].IsProfile_DataSet());
    EXPECT_EQ(FFM_Settings::AnalogDemod_AM, entries(list)[0].GetFFM_Settings().GetAnalogDemod());
}

TEST_F(TargetListTest, AbsentCommonColumnsLeaveTheirMembersUnset)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("IFBandwidth;ProfileName;Frequency;TransmissionSystem;Type;SignalClass;ProfileID\n"
                       "2;N;1;S;T;C;I\n",
                       list, TargetList));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_FALSE(e.IsCommentSet());
    EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_EQ(1.0, e.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(QStringLiteral("I"), e.GetProfile_Data().GetProfileID());
    EXPECT_EQ(QStringLiteral("N"), e.GetProfile_Data().GetProfileName());
}

TEST_F(TargetListTest, PriorityOrThreatClassAloneMarkTheProfileOnlyWhereTheyHoldAText)
{
    // Rows with "---" in both get no profile; a row with a priority gets a
    // profile without its mandatory texts, which fails the entry's Check:
    // the rows ahead of it stay.
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ThreatClass\n"
                        "A;a;1;2;AM;---;---\n"
                        "B;b;3;4;AM;High;---\n"
                        "C;c;5;6;AM;---;---\n",
                        list, TargetList));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_FALSE(entries(list)[1].IsProfile_DataSet());
    ASSERT_EQ(1, int(lines.size()));
    EXPECT_EQ(importError + QStringLiteral("Profile_Data: Please set SignalClass properly."), texts().value(0));
}

TEST_F(TargetListTest, AProfileColumnMarksTheProfileInEveryRowAndAnIncompleteProfileFailsItsRow)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;ProfileID\n"
                        "A;a;1;2;AM;P-1\n"
                        "B;b;3;4;AM;P-2\n",
                        list, TargetList));
    // The very first row already has a profile without its other mandatory
    // texts.
    EXPECT_EQ(1, entries(list).size());
    EXPECT_EQ(QStringList{importError + QStringLiteral("Profile_Data: Please set SignalClass properly.")}, texts());

    // With validation off the Check of the missing texts still fails.
    lines.clear();
    FrequencyStoreList relaxed;
    relaxed.SetValidate(false);
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;SignalClass;ProfileID;TransmissionSystem\n"
                        "A;a;1;2;AM;Voice;P-1;SSB\n",
                        relaxed, TargetList));
    EXPECT_TRUE(entries(relaxed).isEmpty());
    EXPECT_EQ(QStringList{importError + QStringLiteral("Profile_Data: Please set ProfileName properly.")}, texts());
}

TEST_F(TargetListTest, ImportAddsBehindTheEntriesTheListHolds)
{
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(import("Type;ProfileID;SignalClass;TransmissionSystem;ProfileName;Frequency;IFBandwidth\n"
                       "A;P;C;S;N;1;2\n",
                       list, TargetList));
    ASSERT_TRUE(import("Type;ProfileID;SignalClass;TransmissionSystem;ProfileName;Frequency;IFBandwidth\n"
                       "B;P;C;S;N;3;4\n",
                       list, TargetList));
    ASSERT_EQ(3, entries(list).size());
    EXPECT_EQ(QStringLiteral("Old"), entries(list)[0].GetType());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_EQ(QStringLiteral("B"), entries(list)[2].GetType());
    EXPECT_EQ(QStringLiteral("kept"), list.GetName());
}

// --- bad input -------------------------------------------------------------------------------------

TEST_F(TargetListTest, BadInputRowsWithTheWrongFieldCountAddNothing)
{
    const char *const files[] = {
        // one field too many, as the export writes it
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;TransmissionSystem;"
        "ProfileName;ThreatClass\nA;a;1;2;AM;H;P;C;S;N;R\nB;b;1;2;AM;H;P;C;S;N;R;\n",
        // one field too few
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;TransmissionSystem;"
        "ProfileName;ThreatClass\nA;a;1;2;AM;H;P;C;S;N;R\nB;b;1;2;AM;H;P;C;S;N\n",
        // a comment line after the header is a row
        "# targets\nType;ProfileID;SignalClass;TransmissionSystem;ProfileName\nA;P;C;S;N\n# more\n",
    };
    for (const char *text : files) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        const bool result = import(text, list, TargetList);
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << text;
    }
}

TEST_F(TargetListTest, BadInputAFileWithoutATypeColumnIsRefusedAsAWhole)
{
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    const bool result = import("Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                               "TransmissionSystem;ProfileName;ThreatClass\n"
                               "a;1;2;AM;H;P;C;S;N;R\n",
                               list, TargetList);
    EXPECT_TRUE(refused(result, before, list, texts(), missingType));
}

TEST_F(TargetListTest, BadInputAnEmptyTypeEndsTheImportAndKeepsTheRowsAheadOfIt)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                        "TransmissionSystem;ProfileName;ThreatClass\n"
                        "A;a;1;2;AM;H;P;C;S;N;R\n"
                        ";b;3;4;AM;H;P;C;S;N;R\n"
                        "C;c;5;6;AM;H;P;C;S;N;R\n",
                        list, TargetList));
    EXPECT_EQ(QStringList{importError + emptyType}, texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_EQ(QStringLiteral("R"), entries(list)[1].GetProfile_Data().GetThreatClass());
}

TEST_F(TargetListTest, BadInputNumbersThatAreNoNumbersReadAsZero)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Frequency;IFBandwidth;ProfileID;SignalClass;TransmissionSystem;ProfileName\n"
                       "A;abc;---;P;C;S;N\n"
                       "B;1,5;12 kHz;P;C;S;N\n",
                       list, TargetList));
    ASSERT_EQ(2, entries(list).size());
    for (const FrequencyStoreEntry &e : entries(list)) {
        EXPECT_TRUE(e.GetFFM_Settings().GetFrequency().IsValueSet());
        EXPECT_EQ(0.0, e.GetFFM_Settings().GetFrequency().GetValue());
        EXPECT_TRUE(e.GetFFM_Settings().GetIFBandwidth().IsValueSet());
        EXPECT_EQ(0.0, e.GetFFM_Settings().GetIFBandwidth().GetValue());
    }
    EXPECT_TRUE(lines.empty());
}

TEST_F(TargetListTest, BadInputAnUnknownAnalogDemodNameEndsTheImportThere)
{
    const QByteArray file("Type;Comment;Frequency;IFBandwidth;AnalogDemod;ProfileID;SignalClass;TransmissionSystem;"
                          "ProfileName\n"
                          "A;a;1;2;FM;P;C;S;N\n"
                          "B;b;3;4;usb;P;C;S;N\n"
                          "C;c;5;6;AM;P;C;S;N\n");
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import(file, list, TargetList));
    EXPECT_EQ(QStringList{importError + QStringLiteral("enum is not valid (classname=FFM_Settings,membername=m_analogDemod)")},
              texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());

    // With validation off the name is stored as the invalid value, and the
    // entry's Check finds it.
    lines.clear();
    FrequencyStoreList relaxed;
    relaxed.SetValidate(false);
    EXPECT_FALSE(import(file, relaxed, TargetList));
    EXPECT_EQ(QStringList{importError + QStringLiteral("FFM_Settings: Please set AnalogDemod properly.")}, texts());
    EXPECT_EQ(1, entries(relaxed).size());
}

TEST_F(TargetListTest, BadInputAnExportedFileOfAnotherListTypeIsRefused)
{
    FrequencyStoreList source = threeTargets();
    for (ListType type : {Suppress, NOIFrequencies, DataResults, DetectionConventional}) {
        lines.clear();
        const QString file = path("other.csv");
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, file, source, type)) << int(type);
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        bool result = true;
        EXPECT_NO_THROW(result = FileHandling().ImportCSV(file, list, TargetList));
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << int(type);
    }
}

TEST_F(TargetListTest, AnExportedNotePadFileImportsAsATargetListWithoutProfiles)
{
    // The notepad file's header ends in ";" like its rows: it loads, and has
    // none of the profile columns.
    FrequencyStoreList source = threeTargets();
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("notepad.csv"), source, NotePad));
    FrequencyStoreList list;
    ASSERT_TRUE(FileHandling().ImportCSV(path("notepad.csv"), list, TargetList));
    ASSERT_EQ(3, entries(list).size());
    for (const FrequencyStoreEntry &e : entries(list))
        EXPECT_FALSE(e.IsProfile_DataSet());
    EXPECT_EQ(QStringLiteral("Naval HQ"), entries(list)[0].GetComment());
    EXPECT_EQ(FFM_Settings::AnalogDemod_USB, entries(list)[0].GetFFM_Settings().GetAnalogDemod());
    EXPECT_EQ(8416512.35, entries(list)[0].GetFFM_Settings().GetFrequency().GetValue());
}

TEST_F(TargetListTest, BadInputABinaryFile)
{
    const char raw[] = "Type;ProfileID\n\x89PNG\r\n\x1a\n\0\0\0\rIHDR;\xff\xfe\n";
    QByteArray bytes(raw, int(sizeof(raw)) - 1);
    for (int i = 0; i < 2000; ++i)
        bytes.append(char((i * 7919) % 256));
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    bool result = true;
    EXPECT_NO_THROW(result = import(bytes, list, TargetList));
    EXPECT_FALSE(result);
    EXPECT_EQ(before, list);
    ASSERT_EQ(1, int(lines.size()));
    EXPECT_TRUE(lines[0].text.startsWith(importError));
}

} // namespace
