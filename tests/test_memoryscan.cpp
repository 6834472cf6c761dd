// The memory scan file in both directions: the header that loses the columns
// the entries lack, the rows as they are written (no trailing ";"), every
// header form the export makes and the import reads, cells found by name,
// the placeholders, the defaults the import fills in, and bad input. Every
// file is a real file in a temporary folder.

#include "filehandlingtestsupport.h"

#include <QtCore/QFileInfo>

#include <cstdint>
#include <initializer_list>
#include <random>

using Morvane::DF_Settings;
using Morvane::DF_SettingsDetail;
using Morvane::FFM_Settings;
using Morvane::FFM_SettingsDetail;
using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using namespace MorvaneTest;

namespace {

// --- the header and its parts --------------------------------------------------------------

const QString receiverNames = QStringLiteral(
    "Type;Comment;Antenna;Frequency;IFBandwidth;AnalogDemod;Active;AFC;Attenuation;SquelchState;SquelchValue;ChannelNo");
const QString alarmName = QStringLiteral(";Alarm");
const QString dfNames = QStringLiteral(";DFSquelchMode;DFMeasurementTime;DFSquelch;DFBandwidth");
const QString stepNames = QStringLiteral(";DFStep;FreqSpan");
const QString fullHeader = receiverNames + alarmName + dfNames + stepNames;


// --- sample entries ---------------------------------------------------------------------------

FrequencyStoreEntry receiver(const QString &type, const QString &comment, const QString &antenna, double frequency,
                             double bandwidth)
{
    FrequencyStoreEntry e;
    e.SetType(type);
    if (!comment.isNull())
        e.SetComment(comment);
    if (!antenna.isNull())
        e.SetAntenna(antenna);
    FFM_Settings &settings = e.GetFFM_Settings();
    settings.GetFrequency().SetValue(frequency);
    settings.GetIFBandwidth().SetValue(bandwidth);
    return e;
}

void setDF(FrequencyStoreEntry &e, DF_Settings::DFMode mode, double averaging, double level, double bandwidth)
{
    DF_Settings &df = e.GetDF_Settings();
    df.SetDFMode(mode);
    df.SetAveraging(averaging);
    df.GetDetail().SetLevelThreshold(level);
    df.GetBandwidth().SetValue(bandwidth);
}

// Everything the file has, with numbers the file keeps as they are.
FrequencyStoreEntry towerA()
{
    FrequencyStoreEntry e = receiver(QStringLiteral("Fixed"), QStringLiteral("Tower A"), QStringLiteral("ANT-1"),
                                     7012345.68, 2400.13);
    FFM_Settings &settings = e.GetFFM_Settings();
    settings.SetAnalogDemod(FFM_Settings::AnalogDemod_USB);
    settings.SetIFStep(25000.0);
    FFM_SettingsDetail &detail = settings.GetDetail();
    detail.SetActive(true);
    detail.SetAFC(FFM_SettingsDetail::AFC_ON);
    detail.SetAttenuation(FFM_SettingsDetail::Attenuation_AUTO);
    detail.SetSquelchState(FFM_SettingsDetail::SquelchState_ON);
    detail.SetSquelchValue(-12);
    detail.SetChannelNo(7);
    detail.SetAlarm(true);
    setDF(e, DF_Settings::DFMode_Gate, 0.5, -90.25, 12500.0);
    e.GetDF_Settings().SetDFStep(250.0);
    return e;
}
const QString towerReceiver = QStringLiteral("Fixed;Tower A;ANT-1;7012345.68;2400.13;USB;true;ON;AUTO;ON;-12;7");
const QString towerAlarm = QStringLiteral(";true");
const QString towerDF = QStringLiteral(";Gate;0.5;-90.25;12500");
const QString towerStep = QStringLiteral(";250;25000");

// The same columns with the detail mostly unset.
FrequencyStoreEntry scanB()
{
    FrequencyStoreEntry e = receiver(QStringLiteral("Scan"), QString(), QString(), 14.5, 3000.0);
    FFM_Settings &settings = e.GetFFM_Settings();
    settings.SetIFStep(0.125);
    settings.GetDetail().SetActive(false);
    settings.GetDetail().SetAlarm(false);
    setDF(e, DF_Settings::DFMode_Cont, 2.0, 0.0, 0.0);
    e.GetDF_Settings().SetDFStep(0.0);
    return e;
}
const QString scanReceiver = QStringLiteral("Scan;---;---;14.50;3000.00;---;false;---;---;---;---;---");
const QString scanAlarm = QStringLiteral(";false");
const QString scanDF = QStringLiteral(";Cont;2;0;0");
const QString scanStep = QStringLiteral(";0;0.125");

FrequencyStoreEntry withoutAlarm(FrequencyStoreEntry e)
{
    e.GetFFM_Settings().GetDetail().ResetAlarm();
    return e;
}

FrequencyStoreEntry withoutDFStep(FrequencyStoreEntry e)
{
    e.GetDF_Settings().ResetDFStep();
    return e;
}

FrequencyStoreEntry withoutDF(FrequencyStoreEntry e)
{
    e.ResetDF_Settings();
    return e;
}

FrequencyStoreList listOf(std::initializer_list<FrequencyStoreEntry> items)
{
    FrequencyStoreList list;
    for (const FrequencyStoreEntry &e : items)
        list.AppendFrequencyStoreEntry(e);
    return list;
}

// What an entry reads back as: the import gives every entry with DF
// settings a quality threshold of 0.
FrequencyStoreEntry asImported(FrequencyStoreEntry e)
{
    if (e.IsDF_SettingsSet())
        e.GetDF_Settings().GetDetail().SetQualityThreshold(0);
    return e;
}

// A list that already holds one entry, as a caller's list may.
FrequencyStoreList holdingOne()
{
    FrequencyStoreList list;
    list.SetName(QStringLiteral("kept"));
    list.AppendFrequencyStoreEntry(receiver(QStringLiteral("Old"), QStringLiteral("before"), QString(), 1.0, 2.0));
    return list;
}

QByteArray csv(std::initializer_list<QString> items)
{
    QString text;
    for (const QString &line : items)
        text += line + QLatin1Char('\n');
    return text.toUtf8();
}

int fieldsOf(const QByteArray &line)
{
    return int(line.split(';').size());
}

// --- the steps of the export, literally ----------------------------------------------------------

QString fixed(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'f', 2);
}

QString general(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
}

// The export's steps done on one string, each search from the start of the
// whole text: what the file must hold, byte for byte.
QByteArray literalExport(const FrequencyStoreList &list)
{
    QString text = fullHeader + QLatin1Char('\n');
    const auto cell = [&text](const QString &value) {
        text += value.isEmpty() ? QStringLiteral("---") : value;
        text += QLatin1Char(';');
    };
    for (const FrequencyStoreEntry &e : entries(list)) {
        const FFM_Settings &settings = e.GetFFM_Settings();
        const FFM_SettingsDetail &detail = settings.GetDetail();
        const DF_Settings &df = e.GetDF_Settings();
        cell(e.GetType());
        cell(e.GetComment());
        cell(e.GetAntenna());
        cell(fixed(settings.GetFrequency().GetValue()));
        cell(fixed(settings.GetIFBandwidth().GetValue()));
        cell(settings.IsAnalogDemodSet() ? settings.AnalogDemodToName(settings.GetAnalogDemod()) : QString());
        cell(detail.GetActive() ? QStringLiteral("true") : QStringLiteral("false"));
        cell(detail.IsAFCSet() ? detail.AFCToName(detail.GetAFC()) : QString());
        cell(detail.IsAttenuationSet() ? detail.AttenuationToName(detail.GetAttenuation()) : QString());
        cell(detail.IsSquelchStateSet() ? detail.SquelchStateToName(detail.GetSquelchState()) : QString());
        cell(detail.IsSquelchValueSet() ? QString::number(detail.GetSquelchValue()) : QString());
        cell(detail.IsChannelNoSet() ? QString::number(detail.GetChannelNo()) : QString());
        if (detail.IsAlarmSet())
            cell(detail.GetAlarm() ? QStringLiteral("true") : QStringLiteral("false"));
        else
            text.remove(text.indexOf(QStringLiteral(";Alarm")), 6);
        if (e.IsDF_SettingsSet()) {
            cell(df.IsDFModeSet() ? df.DFModeToName(df.GetDFMode()) : QString());
            cell(general(df.GetAveraging()));
            cell(general(df.GetDetail().GetLevelThreshold()));
            cell(general(df.GetBandwidth().GetValue()));
            if (df.IsDFStepSet()) {
                cell(general(df.GetDFStep()));
                cell(general(settings.GetIFStep()));
                text.chop(1);
            } else {
                text.chop(1);
                const QString step = QStringLiteral(";DFStep;FreqSpan");
                if (text.indexOf(step) >= 0)
                    text.remove(text.indexOf(step, 1), step.size());
            }
        } else {
            text.chop(1);
            const QString block = dfNames + stepNames;
            if (text.indexOf(block) >= 0)
                text.remove(text.indexOf(block, 1), block.size());
        }
        text += QLatin1Char('\n');
    }
    return text.toUtf8();
}

// --- the fixture ------------------------------------------------------------------------------------

class MemoryScanTest : public FileHandlingTest
{
protected:
    // The list written as a memory scan file: its bytes.
    QByteArray exported(FrequencyStoreList &list, const char *name = "scan.csv")
    {
        EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(true, path(name), list, MemoryScan));
        return read(path(name));
    }

    bool importScan(const QByteArray &text, FrequencyStoreList &list)
    {
        return import(text, list, MemoryScan);
    }

    // The file of the export read back into a fresh list.
    FrequencyStoreList readBack(const char *name = "scan.csv")
    {
        FrequencyStoreList list;
        EXPECT_TRUE(FileHandling().ImportCSV(path(name), list, MemoryScan));
        return list;
    }

    // An import that fails: false, a list that holds what `kept` says, and
    // one trace line with the message.
    ::testing::AssertionResult refused(bool result, const FrequencyStoreList &list, int kept, const QString &message)
    {
        if (result)
            return ::testing::AssertionFailure() << "the import succeeded";
        if (entries(list).size() != kept)
            return ::testing::AssertionFailure() << entries(list).size() << " entries instead of " << kept;
        const QStringList traced = texts();
        if (traced != QStringList{importError + message})
            return ::testing::AssertionFailure() << "traced " << traced.join(QLatin1Char('|')).toStdString();
        return ::testing::AssertionSuccess();
    }
};

// --- the export ----------------------------------------------------------------------------------------

TEST_F(MemoryScanTest, EntriesWithAlarmDFAndDFStepWriteTheFullHeaderAndRowsOf19CellsThatImportAgain)
{
    FrequencyStoreList list = listOf({towerA(), scanB()});
    const QByteArray bytes = exported(list);
    EXPECT_EQ(csv({fullHeader, towerReceiver + towerAlarm + towerDF + towerStep,
                     scanReceiver + scanAlarm + scanDF + scanStep}),
              bytes);
    const QList<QByteArray> rows = bytes.split('\n');
    ASSERT_EQ(4, rows.size());
    EXPECT_EQ(19, fieldsOf(rows[0]));
    for (int i : {1, 2}) {
        EXPECT_EQ(19, fieldsOf(rows[i])) << i;
        EXPECT_FALSE(rows[i].endsWith(';')) << i;
    }
    EXPECT_TRUE(rows[3].isEmpty());

    const FrequencyStoreList back = readBack();
    ASSERT_EQ(2, entries(back).size());
    EXPECT_EQ(asImported(towerA()), entries(back)[0]);
    EXPECT_EQ(asImported(scanB()), entries(back)[1]);
    EXPECT_TRUE(lines.empty());
}

TEST_F(MemoryScanTest, OneEntryWithoutAlarmAndDFEndsTheHeaderAtChannelNoWithARowOf12Cells)
{
    FrequencyStoreList list = listOf({withoutDF(withoutAlarm(towerA()))});
    const QByteArray bytes = exported(list);
    EXPECT_EQ(csv({receiverNames, towerReceiver}), bytes);
    const QList<QByteArray> rows = bytes.split('\n');
    ASSERT_EQ(3, rows.size());
    EXPECT_EQ(12, fieldsOf(rows[0]));
    EXPECT_EQ(12, fieldsOf(rows[1]));
    EXPECT_FALSE(rows[1].endsWith(';'));

    const FrequencyStoreList back = readBack();
    ASSERT_EQ(1, entries(back).size());
    // FreqSpan is not in the file: the IF step does not come back.
    FrequencyStoreEntry expected = withoutDF(withoutAlarm(towerA()));
    expected.GetFFM_Settings().ResetIFStep();
    EXPECT_EQ(expected, entries(back)[0]);
}

TEST_F(MemoryScanTest, ASecondDFEntryWithoutDFStepShortensTheHeaderButNotTheFirstRow)
{
    FrequencyStoreList list = listOf({towerA(), withoutDFStep(scanB())});
    const QByteArray bytes = exported(list);
    EXPECT_EQ(csv({receiverNames + alarmName + dfNames, towerReceiver + towerAlarm + towerDF + towerStep,
                     scanReceiver + scanAlarm + scanDF}),
              bytes);
    const QList<QByteArray> rows = bytes.split('\n');
    ASSERT_EQ(4, rows.size());
    EXPECT_EQ(17, fieldsOf(rows[0]));
    EXPECT_EQ(19, fieldsOf(rows[1]));
    EXPECT_EQ(17, fieldsOf(rows[2]));

    // The rows disagree: the reader refuses the first one, and the file is
    // lost as a whole.
    FrequencyStoreList target = holdingOne();
    const FrequencyStoreList before = target;
    EXPECT_TRUE(refused(FileHandling().ImportCSV(path("scan.csv"), target, MemoryScan), target, 1, corrupt));
    EXPECT_EQ(before, target);
}

TEST_F(MemoryScanTest, ACommentOfSemicolonAlarmIsHitByTheAlarmSearchOfALaterRow)
{
    FrequencyStoreEntry first = withoutAlarm(towerA());
    first.SetType(QStringLiteral("A"));
    first.SetComment(QStringLiteral(";Alarm"));
    FrequencyStoreEntry second = withoutAlarm(towerA());
    second.SetType(QStringLiteral("B"));
    FrequencyStoreList list = listOf({first, second});
    const QByteArray bytes = exported(list);

    // The first entry takes the name out of the header; the second finds the
    // comment of the first row and takes it from there, and so keeps the
    // ";" behind its ChannelNo.
    const QString rest = towerReceiver.mid(QStringLiteral("Fixed;Tower A").size()) + towerDF + towerStep;
    EXPECT_EQ(csv({receiverNames + dfNames + stepNames, QStringLiteral("A;") + rest, QStringLiteral("B;Tower A") + rest}),
              bytes);
    EXPECT_EQ(literalExport(list), bytes);

    // The file is well formed by chance: the first comment comes back empty.
    const FrequencyStoreList back = readBack();
    ASSERT_EQ(2, entries(back).size());
    EXPECT_TRUE(entries(back)[0].IsCommentSet());
    EXPECT_EQ(QString(), entries(back)[0].GetComment());
    EXPECT_EQ(QStringLiteral("Tower A"), entries(back)[1].GetComment());
    EXPECT_FALSE(entries(back)[1].GetFFM_Settings().GetDetail().IsAlarmSet());
}

TEST_F(MemoryScanTest, ACommentOfTheDFBlockLosesItToTheSearchOfALaterEntryWithoutDF)
{
    // The header has already lost the block to the first entry; the second
    // finds it in the first row's comment.
    FrequencyStoreEntry first = withoutDF(towerA());
    first.SetComment(QStringLiteral("x") + dfNames + stepNames + QStringLiteral("y"));
    FrequencyStoreList list = listOf({first, withoutDF(scanB())});
    const QByteArray bytes = exported(list);
    EXPECT_EQ(csv({receiverNames + alarmName,
                     QStringLiteral("Fixed;xy") + towerReceiver.mid(QStringLiteral("Fixed;Tower A").size()) + towerAlarm,
                     scanReceiver + scanAlarm}),
              bytes);
    EXPECT_EQ(literalExport(list), bytes);
}

TEST_F(MemoryScanTest, ARemovalThatMakesANewMatchInAnEarlierRowIsFoundByALaterSearch)
{
    // The first comment holds the DF block cut by ";Alarm". The header loses
    // its block and its alarm name to the first entries; the fourth entry
    // takes the ";Alarm" out of the comment, which makes the block whole, and
    // its own DF search then finds the block there.
    FrequencyStoreEntry first = withoutDF(towerA());
    first.SetComment(QStringLiteral(";DFSquelchMode;DFMeasurementTime;Alarm;DFSquelch;DFBandwidth;DFStep;FreqSpan"));
    FrequencyStoreList list =
        listOf({first, withoutDF(towerA()), withoutDF(withoutAlarm(towerA())), withoutDF(withoutAlarm(towerA()))});
    const QByteArray bytes = exported(list);
    EXPECT_EQ(csv({receiverNames,
                   QStringLiteral("Fixed;") + towerReceiver.mid(QStringLiteral("Fixed;Tower A").size()) + towerAlarm,
                   towerReceiver + towerAlarm, towerReceiver, towerReceiver}),
              bytes);
    EXPECT_EQ(literalExport(list), bytes);
}

TEST_F(MemoryScanTest, EntriesWithoutAlarmLoseAFurtherCharacterFromTheSecondRowOn)
{
    // With DF settings: the ";" behind ChannelNo goes, ChannelNo runs into
    // the next cell.
    FrequencyStoreEntry second = withoutAlarm(scanB());
    second.GetFFM_Settings().GetDetail().SetChannelNo(42);
    const QString secondReceiver = scanReceiver.left(scanReceiver.size() - 3) + QStringLiteral("42");
    FrequencyStoreList withDF = listOf({withoutAlarm(towerA()), second, second});
    EXPECT_EQ(csv({receiverNames + dfNames + stepNames, towerReceiver + towerDF + towerStep,
                     secondReceiver + scanDF.mid(1) + scanStep, secondReceiver + scanDF.mid(1) + scanStep}),
              exported(withDF, "withdf.csv"));

    // Without DF settings the chop takes the last character of ChannelNo.
    FrequencyStoreList withoutDFList = listOf({withoutDF(withoutAlarm(towerA())), withoutDF(second)});
    EXPECT_EQ(csv({receiverNames, towerReceiver, secondReceiver.left(secondReceiver.size() - 1)}),
              exported(withoutDFList, "nodf.csv"));
}

TEST_F(MemoryScanTest, TheShortAndTheLongDFRemovalsExcludeEachOther)
{
    // DF without a step first: the short names go, the long block is not
    // found any more.
    FrequencyStoreList shortFirst = listOf({withoutDFStep(towerA()), withoutDF(scanB())});
    EXPECT_EQ(csv({receiverNames + alarmName + dfNames, towerReceiver + towerAlarm + towerDF, scanReceiver + scanAlarm}),
              exported(shortFirst, "short.csv"));
    // No DF first: the block goes, the short names are not found either.
    FrequencyStoreList longFirst = listOf({withoutDF(scanB()), withoutDFStep(towerA())});
    EXPECT_EQ(csv({receiverNames + alarmName, scanReceiver + scanAlarm, towerReceiver + towerAlarm + towerDF}),
              exported(longFirst, "long.csv"));
}

TEST_F(MemoryScanTest, AnEmptyListWritesTheFullHeaderAndReadsBackWithoutEntries)
{
    FrequencyStoreList empty;
    EXPECT_EQ(csv({fullHeader}), exported(empty));
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    EXPECT_TRUE(FileHandling().ImportCSV(path("scan.csv"), list, MemoryScan));
    EXPECT_EQ(before, list);
    EXPECT_TRUE(lines.empty());
}

TEST_F(MemoryScanTest, CellsAreWrittenInTheirTextForms)
{
    // Frequency and IFBandwidth with 2 decimals; DF numbers and the IF step
    // through 'g' with precision -1, which is six significant digits.
    FrequencyStoreEntry e = receiver(QStringLiteral("T"), QStringLiteral("c"), QStringLiteral("a"), -12.345, 0.005);
    FFM_Settings &settings = e.GetFFM_Settings();
    settings.SetIFStep(1234567.0);
    settings.GetDetail().SetAttenuation(FFM_SettingsDetail::Attenuation_MANUAL);
    settings.GetDetail().SetAFC(FFM_SettingsDetail::AFC_OFF);
    settings.GetDetail().SetSquelchState(FFM_SettingsDetail::SquelchState_OFF);
    settings.GetDetail().SetSquelchValue(0);
    settings.GetDetail().SetChannelNo(-3);
    settings.GetDetail().SetAlarm(false);
    settings.SetAnalogDemod(FFM_Settings::AnalogDemod_UNKNOWN);
    setDF(e, DF_Settings::DFMode_Norm, 0.1, -1e-05, 1e6);
    e.GetDF_Settings().SetDFStep(123456789.0);
    FrequencyStoreList list = listOf({e});
    EXPECT_EQ(csv({fullHeader,
                     QStringLiteral("T;c;a;-12.35;0.01;UNKNOWN;false;OFF;MANUAL;OFF;0;-3;false;Norm;0.1;-1e-05;1e+06;"
                                    "1.23457e+08;1.23457e+06")}),
              exported(list));

    // Read back, the numbers are what the text says.
    const FrequencyStoreList back = readBack();
    ASSERT_EQ(1, entries(back).size());
    EXPECT_EQ(123457000.0, entries(back)[0].GetDF_Settings().GetDFStep());
    EXPECT_EQ(1234570.0, entries(back)[0].GetFFM_Settings().GetIFStep());
    EXPECT_EQ(-12.35, entries(back)[0].GetFFM_Settings().GetFrequency().GetValue());
}

TEST_F(MemoryScanTest, UnsetCellsAreWrittenAsPlaceholdersOrAsTheMembersValues)
{
    // Active is written without a test; the DF numbers too. An entry whose
    // DF settings are present but empty has no DFStep.
    FrequencyStoreEntry e = receiver(QStringLiteral("T"), QString(), QString(), 1.0, 2.0);
    e.GetDF_Settings();
    ASSERT_TRUE(e.IsDF_SettingsSet());
    FrequencyStoreList list = listOf({e});
    EXPECT_EQ(csv({receiverNames + dfNames, QStringLiteral("T;---;---;1.00;2.00;---;false;---;---;---;---;---;---;0;0;0")}),
              exported(list));

    // An empty comment or type is a placeholder too.
    FrequencyStoreEntry blank = receiver(QStringLiteral(""), QStringLiteral(""), QStringLiteral(""), 1.0, 2.0);
    blank.GetFFM_Settings().GetDetail().SetAlarm(true);
    FrequencyStoreList blanks = listOf({blank});
    EXPECT_EQ(csv({receiverNames + alarmName, QStringLiteral("---;---;---;1.00;2.00;---;false;---;---;---;---;---;true")}),
              exported(blanks, "blank.csv"));
}

TEST_F(MemoryScanTest, TheExportLeavesTheCallersListUntouched)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    FrequencyStoreEntry shortTime;
    shortTime.SetType(QStringLiteral("ST"));
    shortTime.GetShortTime_Settings();
    list.AppendFrequencyStoreEntry(shortTime);
    list.AppendFrequencyStoreEntry(receiver(QStringLiteral("Bare"), QString(), QString(), 1.0, 2.0));
    list.AppendFrequencyStoreEntry(towerA());
    const FrequencyStoreList before = list;
    const QByteArray bytes = exported(list);
    EXPECT_EQ(literalExport(before), bytes);
    EXPECT_EQ(before, list);
    const FrequencyStoreEntry &kept = entries(list)[0];
    EXPECT_FALSE(kept.IsFFM_SettingsSet());
    EXPECT_FALSE(kept.IsDF_SettingsSet());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings, kept.GetChoiceFrequencyStoreEntry());
    EXPECT_FALSE(entries(list)[1].GetFFM_Settings().IsDetailSet());
    EXPECT_FALSE(entries(list)[1].IsDF_SettingsSet());
    EXPECT_TRUE(bytes.startsWith((receiverNames + QStringLiteral("\nST;---;---;")).toUtf8()));
}

TEST_F(MemoryScanTest, TheExportIsTheLiteralStepsOnListsOfAnyMix)
{
    // Texts that the searches can hit, and texts that make a new hit when a
    // match is taken out of them.
    const QString texts[] = {QStringLiteral(""),
                             QStringLiteral("c"),
                             QStringLiteral(";Alarm"),
                             QStringLiteral("Alarm"),
                             QStringLiteral(";Al;Alarmarm"),
                             QStringLiteral("x;Alarm;Alarm"),
                             QStringLiteral(";DFStep;FreqSpan"),
                             QStringLiteral(";DFStep;DFStep;FreqSpanFreqSpan"),
                             dfNames + stepNames,
                             QStringLiteral(";DFSquelchMode;DFMeasurementTime") + dfNames + stepNames
                                 + QStringLiteral(";DFSquelch;DFBandwidth;DFStep;FreqSpan"),
                             QStringLiteral("line\nfeed;Alarm"),
                             QStringLiteral("DFStep;FreqSpan"),
                             QStringLiteral(";Al;DFStep;FreqSpanarm"),
                             QStringLiteral(";DFStep;Alarm;FreqSpan"),
                             QStringLiteral(";DFSquelchMode;DFMeasurementTime;Alarm;DFSquelch;DFBandwidth;DFStep;FreqSpan"),
                             QStringLiteral(";Al") + dfNames + stepNames + QStringLiteral("arm")};
    const int textCount = int(sizeof(texts) / sizeof(texts[0]));
    std::mt19937 generator(20240611u);
    const auto pick = [&generator](int n) { return int(generator() % std::uint32_t(n)); };
    for (int round = 0; round < 600; ++round) {
        FrequencyStoreList list;
        const int count = 1 + pick(40);
        for (int i = 0; i < count; ++i) {
            FrequencyStoreEntry e = pick(2) ? towerA() : scanB();
            if (pick(3))
                e.SetComment(texts[pick(textCount)]);
            if (pick(3))
                e.SetAntenna(texts[pick(textCount)]);
            if (pick(4) == 0)
                e.SetType(texts[1 + pick(textCount - 1)]);
            if (pick(2))
                e = withoutAlarm(e);
            switch (pick(3)) {
            case 0: e = withoutDF(e); break;
            case 1: e = withoutDFStep(e); break;
            default: break;
            }
            list.AppendFrequencyStoreEntry(e);
        }
        const QString file = path("mix.csv");
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, file, list, MemoryScan)) << round;
        ASSERT_EQ(literalExport(list), read(file)) << "round " << round;
    }
    EXPECT_TRUE(lines.empty());
}

// How long such an export takes, at 25,000 and 100,000 entries, is the scale
// benchmark's business (bench_csv); here the bytes of a long mixed list.
TEST_F(MemoryScanTest, ALongMixedListWithSearchHitsInItsCommentsIsWrittenAsTheStepsSay)
{
    // The header loses its names half way, and every tenth comment is a hit
    // for the alarm search.
    FrequencyStoreList list;
    const FrequencyStoreEntry full = towerA();
    const FrequencyStoreEntry noAlarm = withoutAlarm(towerA());
    const FrequencyStoreEntry noStep = withoutDFStep(towerA());
    const int count = 2000;
    for (int i = 0; i < count; ++i) {
        FrequencyStoreEntry e = i < count / 2 ? full : (i % 2 ? noAlarm : noStep);
        if (i % 10 == 0)
            e.SetComment(QStringLiteral("hit;Alarm"));
        list.AppendFrequencyStoreEntry(e);
    }
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("big.csv"), list, MemoryScan));
    const QByteArray bytes = read(path("big.csv"));
    const QList<QByteArray> rows = bytes.split('\n');
    ASSERT_EQ(count + 2, rows.size());
    EXPECT_EQ((receiverNames + dfNames).toUtf8(), rows[0]);
    // The alarm searches of the second half took the ";Alarm" of the
    // comments, the first half's one by one, and those of the second half as
    // they came; the later rows found none and lost their ";" behind
    // ChannelNo.
    EXPECT_FALSE(bytes.contains(";Alarm"));
    EXPECT_EQ(QByteArray("Fixed;hit;ANT-1;"), rows[1].left(16));
    EXPECT_EQ(19, fieldsOf(rows[1]));
    EXPECT_EQ(19, fieldsOf(rows[2]));
    EXPECT_EQ(17, fieldsOf(rows[count / 2 + 1]));
    EXPECT_TRUE(rows[count].contains(";-12;7Gate;0.5;"));
    EXPECT_TRUE(rows[count + 1].isEmpty());
}

TEST_F(MemoryScanTest, AnExportToAPathThatCannotBeOpenedFailsWithATrace)
{
    FrequencyStoreList list = listOf({towerA()});
    const QString file = path("missing/scan.csv");
    EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, file, list, MemoryScan));
    EXPECT_EQ(QStringList{exportError + QStringLiteral("Can't open file for writing: '") + file + QLatin1Char('\'')},
              texts());
    EXPECT_TRUE(folder().isEmpty());
}

// --- the header forms, each written and read ----------------------------------------------------------------

TEST_F(MemoryScanTest, HeaderFullIsWrittenAndRead)
{
    FrequencyStoreList list = listOf({scanB(), towerA()});
    EXPECT_EQ(csv({fullHeader, scanReceiver + scanAlarm + scanDF + scanStep, towerReceiver + towerAlarm + towerDF + towerStep}),
              exported(list));
    const FrequencyStoreList back = readBack();
    ASSERT_EQ(2, entries(back).size());
    EXPECT_EQ(asImported(scanB()), entries(back)[0]);
    EXPECT_EQ(asImported(towerA()), entries(back)[1]);
}

TEST_F(MemoryScanTest, HeaderWithoutAlarmIsWrittenAndRead)
{
    // Only a list of one entry without an alarm gives a well-formed file of
    // this form.
    FrequencyStoreList list = listOf({withoutAlarm(towerA())});
    EXPECT_EQ(csv({receiverNames + dfNames + stepNames, towerReceiver + towerDF + towerStep}), exported(list));
    FrequencyStoreList back = readBack();
    ASSERT_EQ(1, entries(back).size());
    EXPECT_EQ(asImported(withoutAlarm(towerA())), entries(back)[0]);

    // A hand-written file of the form, two rows.
    ASSERT_TRUE(importScan(csv({receiverNames + dfNames + stepNames, towerReceiver + towerDF + towerStep,
                                  scanReceiver + scanDF + scanStep}),
                           back));
    ASSERT_EQ(3, entries(back).size());
    EXPECT_EQ(asImported(withoutAlarm(scanB())), entries(back)[2]);
}

TEST_F(MemoryScanTest, HeaderWithoutDFStepAndFreqSpanIsWrittenAndRead)
{
    FrequencyStoreList list = listOf({withoutDFStep(towerA()), withoutDFStep(scanB())});
    EXPECT_EQ(csv({receiverNames + alarmName + dfNames, towerReceiver + towerAlarm + towerDF, scanReceiver + scanAlarm + scanDF}),
              exported(list));
    const FrequencyStoreList back = readBack();
    ASSERT_EQ(2, entries(back).size());
    // FreqSpan is the IF step: not in the file, not read back.
    FrequencyStoreEntry first = asImported(withoutDFStep(towerA()));
    first.GetFFM_Settings().ResetIFStep();
    FrequencyStoreEntry second = asImported(withoutDFStep(scanB()));
    second.GetFFM_Settings().ResetIFStep();
    EXPECT_EQ(first, entries(back)[0]);
    EXPECT_EQ(second, entries(back)[1]);
}

TEST_F(MemoryScanTest, HeaderWithoutTheDFBlockIsWrittenAndRead)
{
    FrequencyStoreList list = listOf({withoutDF(towerA()), withoutDF(scanB())});
    EXPECT_EQ(csv({receiverNames + alarmName, towerReceiver + towerAlarm, scanReceiver + scanAlarm}), exported(list));
    const FrequencyStoreList back = readBack();
    ASSERT_EQ(2, entries(back).size());
    FrequencyStoreEntry first = withoutDF(towerA());
    first.GetFFM_Settings().ResetIFStep();
    FrequencyStoreEntry second = withoutDF(scanB());
    second.GetFFM_Settings().ResetIFStep();
    EXPECT_EQ(first, entries(back)[0]);
    EXPECT_EQ(second, entries(back)[1]);
    EXPECT_FALSE(entries(back)[0].IsDF_SettingsSet());
}

TEST_F(MemoryScanTest, HeaderWithoutAlarmAndDFStepIsWrittenAndRead)
{
    FrequencyStoreList list = listOf({withoutDFStep(withoutAlarm(towerA()))});
    EXPECT_EQ(csv({receiverNames + dfNames, towerReceiver + towerDF}), exported(list));
    FrequencyStoreList back = readBack();
    ASSERT_EQ(1, entries(back).size());
    FrequencyStoreEntry expected = asImported(withoutDFStep(withoutAlarm(towerA())));
    expected.GetFFM_Settings().ResetIFStep();
    EXPECT_EQ(expected, entries(back)[0]);

    ASSERT_TRUE(importScan(csv({receiverNames + dfNames, scanReceiver + scanDF, towerReceiver + towerDF}), back));
    ASSERT_EQ(3, entries(back).size());
    EXPECT_EQ(expected, entries(back)[2]);
}

TEST_F(MemoryScanTest, HeaderWithoutAlarmAndTheDFBlockIsWrittenAndRead)
{
    FrequencyStoreList list = listOf({withoutDF(withoutAlarm(scanB()))});
    EXPECT_EQ(csv({receiverNames, scanReceiver}), exported(list));
    FrequencyStoreList back = readBack();
    ASSERT_EQ(1, entries(back).size());
    FrequencyStoreEntry expected = withoutDF(withoutAlarm(scanB()));
    expected.GetFFM_Settings().ResetIFStep();
    EXPECT_EQ(expected, entries(back)[0]);

    ASSERT_TRUE(importScan(csv({receiverNames, towerReceiver, scanReceiver}), back));
    ASSERT_EQ(3, entries(back).size());
    EXPECT_EQ(expected, entries(back)[2]);
    EXPECT_EQ(7, entries(back)[1].GetFFM_Settings().GetDetail().GetChannelNo());
}

// --- the import ----------------------------------------------------------------------------------------------

TEST_F(MemoryScanTest, ImportFindsTheColumnsByNameInAnyOrder)
{
    FrequencyStoreList list;
    ASSERT_TRUE(importScan("FreqSpan;DFStep;Alarm;Type;Frequency;IFBandwidth;DFSquelchMode;DFMeasurementTime;DFSquelch;"
                           "DFBandwidth;Comment;Antenna;ChannelNo;SquelchValue;SquelchState;Attenuation;AFC;Active;"
                           "AnalogDemod\n"
                           "250;5;true;T1;100.5;10;Norm;1.5;-80;9000;first;ANT;3;-40;ON;OFF;ON;true;FM\n",
                           list));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_EQ(QStringLiteral("T1"), e.GetType());
    EXPECT_EQ(QStringLiteral("first"), e.GetComment());
    EXPECT_EQ(QStringLiteral("ANT"), e.GetAntenna());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings, e.GetChoiceFrequencyStoreEntry());
    const FFM_Settings &settings = e.GetFFM_Settings();
    EXPECT_EQ(100.5, settings.GetFrequency().GetValue());
    EXPECT_EQ(10.0, settings.GetIFBandwidth().GetValue());
    EXPECT_EQ(FFM_Settings::AnalogDemod_FM, settings.GetAnalogDemod());
    EXPECT_EQ(250.0, settings.GetIFStep());
    const FFM_SettingsDetail &detail = settings.GetDetail();
    EXPECT_TRUE(detail.GetActive());
    EXPECT_EQ(FFM_SettingsDetail::AFC_ON, detail.GetAFC());
    EXPECT_EQ(FFM_SettingsDetail::Attenuation_OFF, detail.GetAttenuation());
    EXPECT_EQ(FFM_SettingsDetail::SquelchState_ON, detail.GetSquelchState());
    EXPECT_EQ(-40, detail.GetSquelchValue());
    EXPECT_EQ(3, detail.GetChannelNo());
    EXPECT_TRUE(detail.IsAlarmSet());
    EXPECT_TRUE(detail.GetAlarm());
    // The file's own names: DFSquelchMode is the mode, DFMeasurementTime the
    // averaging, DFSquelch the level threshold, FreqSpan the IF step.
    const DF_Settings &df = e.GetDF_Settings();
    EXPECT_EQ(DF_Settings::DFMode_Norm, df.GetDFMode());
    EXPECT_EQ(1.5, df.GetAveraging());
    EXPECT_EQ(-80.0, df.GetDetail().GetLevelThreshold());
    EXPECT_EQ(9000.0, df.GetBandwidth().GetValue());
    EXPECT_EQ(5.0, df.GetDFStep());
    EXPECT_FALSE(df.IsFreqSpanSet());
    EXPECT_TRUE(df.GetDetail().IsQualityThresholdSet());
    EXPECT_EQ(0, df.GetDetail().GetQualityThreshold());
    EXPECT_TRUE(lines.empty());
}

TEST_F(MemoryScanTest, ImportOfAFileWithColumnsMissingLeavesTheirMembersAlone)
{
    FrequencyStoreList list;
    ASSERT_TRUE(importScan("Type;IFBandwidth;Frequency;Active\nA;2;1;true\nB;4;3;false\n", list));
    ASSERT_EQ(2, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[1];
    EXPECT_EQ(QStringLiteral("B"), e.GetType());
    EXPECT_FALSE(e.IsCommentSet());
    EXPECT_FALSE(e.IsAntennaSet());
    EXPECT_EQ(3.0, e.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(4.0, e.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_FALSE(e.GetFFM_Settings().IsIFStepSet());
    const FFM_SettingsDetail &detail = e.GetFFM_Settings().GetDetail();
    EXPECT_TRUE(detail.IsActiveSet());
    EXPECT_FALSE(detail.GetActive());
    EXPECT_FALSE(detail.IsAlarmSet());
    EXPECT_FALSE(detail.IsAFCSet());
    EXPECT_FALSE(detail.IsChannelNoSet());
    EXPECT_FALSE(e.IsDF_SettingsSet());
    EXPECT_TRUE(entries(list)[0].GetFFM_Settings().GetDetail().GetActive());
}

TEST_F(MemoryScanTest, ImportSkipsPlaceholdersInAllCellsButTypeFrequencyAndIFBandwidth)
{
    QString row;
    for (int i = 0; i < 19; ++i)
        row += i ? QStringLiteral(";---") : QStringLiteral("---");
    FrequencyStoreList list;
    ASSERT_TRUE(importScan(csv({fullHeader, row}), list));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_EQ(QStringLiteral("---"), e.GetType());
    EXPECT_FALSE(e.IsCommentSet());
    EXPECT_FALSE(e.IsAntennaSet());
    const FFM_Settings &settings = e.GetFFM_Settings();
    EXPECT_TRUE(settings.GetFrequency().IsValueSet());
    EXPECT_EQ(0.0, settings.GetFrequency().GetValue());
    EXPECT_TRUE(settings.GetIFBandwidth().IsValueSet());
    EXPECT_EQ(0.0, settings.GetIFBandwidth().GetValue());
    EXPECT_FALSE(settings.IsAnalogDemodSet());
    EXPECT_FALSE(settings.IsIFStepSet());
    // A skipped cell touches nothing: no detail, no DF settings.
    EXPECT_FALSE(settings.IsDetailSet());
    EXPECT_FALSE(e.IsDF_SettingsSet());
}

TEST_F(MemoryScanTest, ImportOfDFCellsThatAreAllPlaceholdersGivesNoDFSettings)
{
    // A skipped DF cell does not make the DF settings present, so the row
    // gets no quality threshold either and passes its check.
    FrequencyStoreList list;
    ASSERT_TRUE(importScan(csv({fullHeader, towerReceiver + towerAlarm + QStringLiteral(";---;---;---;---;---;---")}), list));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_FALSE(entries(list)[0].IsDF_SettingsSet());
    EXPECT_FALSE(entries(list)[0].GetDF_Settings().IsDetailSet());
    // FreqSpan "---" leaves the IF step alone as well.
    EXPECT_FALSE(entries(list)[0].GetFFM_Settings().IsIFStepSet());
    EXPECT_TRUE(lines.empty());
}

TEST_F(MemoryScanTest, ImportOfAnyDFCellMakesDFSettingsPresentWithQualityThresholdZero)
{
    // All DF cells but DFSquelch: the detail is there with its quality
    // threshold, so the check stops at the level threshold, not before it.
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(importScan(csv({receiverNames + dfNames + stepNames, towerReceiver + QStringLiteral(";Gate;0.5;---;12500;250;25000")}),
                            list));
    EXPECT_EQ(QStringList{importError + QStringLiteral("Detail: Please set LevelThreshold properly.")}, texts());
    EXPECT_EQ(1, entries(list).size());

    // With every DF cell the entry is complete and has the default.
    lines.clear();
    ASSERT_TRUE(importScan(csv({receiverNames + dfNames, towerReceiver + towerDF}), list));
    ASSERT_EQ(2, entries(list).size());
    const DF_Settings &df = entries(list)[1].GetDF_Settings();
    EXPECT_TRUE(df.IsDetailSet());
    EXPECT_TRUE(df.GetDetail().IsQualityThresholdSet());
    EXPECT_EQ(0, df.GetDetail().GetQualityThreshold());
}

TEST_F(MemoryScanTest, AnImportedRowWithOnlyADFStepCellHasDFSettingsAndFailsTheirCheck)
{
    // The DFStep cell alone makes the DF settings present: they get the
    // quality threshold 0, but lack their mandatory members, and the entry
    // fails its check at the first of them. The rows ahead of it stay.
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(importScan("Type;Frequency;IFBandwidth;DFStep\nA;1;2;---\nB;3;4;250\nC;5;6;---\n", list));
    EXPECT_EQ(QStringList{importError + QStringLiteral("DF_Settings: Please set Averaging properly.")}, texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_FALSE(entries(list)[1].IsDF_SettingsSet());
}

TEST_F(MemoryScanTest, AlarmAndActiveCompareExactlySoTrueWithACapitalImportsAsFalse)
{
    FrequencyStoreList list;
    ASSERT_TRUE(importScan("Type;Frequency;IFBandwidth;Alarm;Active\n"
                           "A;1;2;True;TRUE\n"
                           "B;1;2;true;true\n"
                           "C;1;2;1;yes\n"
                           "D;1;2;;\n",
                           list));
    ASSERT_EQ(4, entries(list).size());
    const bool expected[4] = {false, true, false, false};
    for (int i = 0; i < 4; ++i) {
        const FFM_SettingsDetail &detail = entries(list)[i].GetFFM_Settings().GetDetail();
        EXPECT_TRUE(detail.IsAlarmSet()) << i;
        EXPECT_EQ(expected[i], detail.GetAlarm()) << i;
        EXPECT_TRUE(detail.IsActiveSet()) << i;
        EXPECT_EQ(expected[i], detail.GetActive()) << i;
    }
}

TEST_F(MemoryScanTest, ImportOfAReceiverCellSelectsFFMSettings)
{
    // No Frequency and no IFBandwidth: one detail cell selects the settings.
    // With validation on, the incomplete settings fail the check; off, the
    // entry is taken as it is.
    FrequencyStoreList list;
    list.SetValidate(false);
    ASSERT_TRUE(importScan("Type;ChannelNo\nA;9\nB;---\n", list));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings, entries(list)[0].GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(entries(list)[0].IsFFM_SettingsSet());
    EXPECT_EQ(9, entries(list)[0].GetFFM_Settings().GetDetail().GetChannelNo());
    // The placeholder selects nothing.
    EXPECT_FALSE(entries(list)[1].IsFFM_SettingsSet());
    EXPECT_EQ(entries(list)[1].GetInvalidChoiceFrequencyStoreEntry(), entries(list)[1].GetChoiceFrequencyStoreEntry());

    FrequencyStoreList validated;
    EXPECT_FALSE(importScan("Type;ChannelNo\nA;9\n", validated));
    EXPECT_EQ(QStringList{importError
                          + QStringLiteral("FrequencyStoreEntry:Check failed. The mandatory member m_fFM_Settings is not "
                                           "set or mandatory data of the member is not set.")},
              texts());
    EXPECT_TRUE(entries(validated).isEmpty());
}

TEST_F(MemoryScanTest, ImportOfEmptyCellsStoresThemAsTheyRead)
{
    // An empty cell is no placeholder: empty texts, false flags, 0 numbers.
    FrequencyStoreList list;
    ASSERT_TRUE(importScan("Type;Comment;Antenna;Frequency;IFBandwidth;Active;SquelchValue;ChannelNo;FreqSpan\n"
                           "A;;;;;;;;\n",
                           list));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_TRUE(e.IsCommentSet());
    EXPECT_TRUE(e.GetComment().isEmpty());
    EXPECT_TRUE(e.IsAntennaSet());
    EXPECT_TRUE(e.GetFFM_Settings().GetDetail().IsActiveSet());
    EXPECT_TRUE(e.GetFFM_Settings().GetDetail().IsSquelchValueSet());
    EXPECT_EQ(0, e.GetFFM_Settings().GetDetail().GetSquelchValue());
    EXPECT_TRUE(e.GetFFM_Settings().IsIFStepSet());
    EXPECT_EQ(0.0, e.GetFFM_Settings().GetIFStep());
}

TEST_F(MemoryScanTest, ImportAddsBehindTheEntriesTheListHolds)
{
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(importScan(csv({fullHeader, towerReceiver + towerAlarm + towerDF + towerStep}), list));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("Old"), entries(list)[0].GetType());
    EXPECT_EQ(asImported(towerA()), entries(list)[1]);
    EXPECT_EQ(QStringLiteral("kept"), list.GetName());
    // The entries take the list's validation flag.
    EXPECT_TRUE(entries(list)[1].GetValidate());
    FrequencyStoreList relaxed;
    relaxed.SetValidate(false);
    ASSERT_TRUE(importScan(csv({fullHeader, towerReceiver + towerAlarm + towerDF + towerStep}), relaxed));
    ASSERT_EQ(1, entries(relaxed).size());
    EXPECT_FALSE(entries(relaxed)[0].GetValidate());
}

// --- bad input -----------------------------------------------------------------------------------------------------

TEST_F(MemoryScanTest, BadInputRowsWithTheWrongFieldCountLoseTheWholeFile)
{
    const QString good = towerReceiver + towerAlarm + towerDF + towerStep;
    const QByteArray files[] = {
        csv({fullHeader, good, good + QStringLiteral(";")}),
        csv({fullHeader, good, good.left(good.lastIndexOf(QLatin1Char(';')))}),
        csv({fullHeader, good, QStringLiteral("# no comment here")}),
        csv({receiverNames, towerReceiver, towerReceiver + towerAlarm}),
    };
    for (const QByteArray &file : files) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        EXPECT_TRUE(refused(importScan(file, list), list, 1, corrupt)) << file.constData();
        EXPECT_EQ(before, list);
    }

    // A file of entries that disagree, as the export writes it.
    lines.clear();
    FrequencyStoreList mixed = listOf({towerA(), withoutAlarm(scanB())});
    exported(mixed, "mixed.csv");
    FrequencyStoreList list = holdingOne();
    EXPECT_TRUE(refused(FileHandling().ImportCSV(path("mixed.csv"), list, MemoryScan), list, 1, corrupt));
}

TEST_F(MemoryScanTest, BadInputAFileWithoutATypeColumnIsRefusedAsAWhole)
{
    const char *const files[] = {
        "Comment;Frequency;IFBandwidth;Alarm\nc;1;2;true\nd;3;4;false\n",
        "type;Frequency;IFBandwidth\nT;1;2\n",
        "Comment;DFStep\n",
    };
    for (const char *text : files) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        EXPECT_TRUE(refused(importScan(text, list), list, 1, missingType)) << text;
    }
    // The column alone, with no rows, is a list of no rows.
    lines.clear();
    FrequencyStoreList list = holdingOne();
    EXPECT_TRUE(importScan("Type\n", list));
    EXPECT_EQ(1, entries(list).size());
    EXPECT_TRUE(lines.empty());
}

TEST_F(MemoryScanTest, BadInputAnEmptyTypeEndsTheImportAndKeepsTheRowsAheadOfIt)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_TRUE(refused(importScan(csv({fullHeader, towerReceiver + towerAlarm + towerDF + towerStep,
                                          scanReceiver + scanAlarm + scanDF + scanStep,
                                          towerReceiver.mid(5) + towerAlarm + towerDF + towerStep,
                                          towerReceiver + towerAlarm + towerDF + towerStep}),
                                   list),
                        list, 3, emptyType));
    EXPECT_EQ(QStringLiteral("Old"), entries(list)[0].GetType());
    EXPECT_EQ(asImported(towerA()), entries(list)[1]);
    EXPECT_EQ(asImported(scanB()), entries(list)[2]);
}

TEST_F(MemoryScanTest, BadInputNumbersThatAreNoNumbersReadAsZero)
{
    FrequencyStoreList list;
    ASSERT_TRUE(importScan("Type;Frequency;IFBandwidth;SquelchValue;ChannelNo;DFSquelchMode;DFMeasurementTime;DFSquelch;"
                           "DFBandwidth;DFStep;FreqSpan\n"
                           "A;abc;1,5;x;12.7;Cont;fast;;12 kHz;0x10;--\n",
                           list));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    const FFM_Settings &settings = e.GetFFM_Settings();
    EXPECT_TRUE(settings.GetFrequency().IsValueSet());
    EXPECT_EQ(0.0, settings.GetFrequency().GetValue());
    EXPECT_EQ(0.0, settings.GetIFBandwidth().GetValue());
    EXPECT_TRUE(settings.GetDetail().IsSquelchValueSet());
    EXPECT_EQ(0, settings.GetDetail().GetSquelchValue());
    EXPECT_TRUE(settings.GetDetail().IsChannelNoSet());
    EXPECT_EQ(0, settings.GetDetail().GetChannelNo());
    EXPECT_TRUE(settings.IsIFStepSet());
    EXPECT_EQ(0.0, settings.GetIFStep());
    const DF_Settings &df = e.GetDF_Settings();
    EXPECT_TRUE(df.IsAveragingSet());
    EXPECT_EQ(0.0, df.GetAveraging());
    EXPECT_TRUE(df.GetDetail().IsLevelThresholdSet());
    EXPECT_EQ(0.0, df.GetDetail().GetLevelThreshold());
    EXPECT_TRUE(df.GetBandwidth().IsValueSet());
    EXPECT_EQ(0.0, df.GetBandwidth().GetValue());
    EXPECT_TRUE(df.IsDFStepSet());
    EXPECT_EQ(0.0, df.GetDFStep());
    EXPECT_TRUE(lines.empty());
}

TEST_F(MemoryScanTest, BadInputUnknownEnumNamesFailInTheSetterWithValidationOn)
{
    const struct
    {
        const char *column;
        const char *value;
        const char *message;
    } cases[] = {
        {"AnalogDemod", "usb", "enum is not valid (classname=FFM_Settings,membername=m_analogDemod)"},
        {"AFC", "on", "enum is not valid (classname=FFM_SettingsDetail,membername=m_aFC)"},
        {"Attenuation", "HIGH", "enum is not valid (classname=FFM_SettingsDetail,membername=m_attenuation)"},
        {"SquelchState", "", "enum is not valid (classname=FFM_SettingsDetail,membername=m_squelchState)"},
        {"DFSquelchMode", "cont", "enum is not valid (classname=DF_Settings,membername=m_dFMode)"},
    };
    for (const auto &c : cases) {
        lines.clear();
        const QByteArray file = QByteArray("Type;Frequency;IFBandwidth;") + c.column + "\nA;1;2;---\nB;3;4;" + c.value
                                + "\nC;5;6;---\n";
        FrequencyStoreList list = holdingOne();
        ASSERT_TRUE(list.GetValidate());
        EXPECT_TRUE(refused(importScan(file, list), list, 2, QString::fromLatin1(c.message))) << c.column;
        EXPECT_EQ(QStringLiteral("A"), entries(list).last().GetType()) << c.column;
    }
}

TEST_F(MemoryScanTest, BadInputUnknownEnumNamesFailTheCheckWithValidationOff)
{
    const struct
    {
        const char *column;
        const char *good;
        const char *message;
    } cases[] = {
        {"AnalogDemod", "AM", "FFM_Settings: Please set AnalogDemod properly."},
        {"AFC", "OFF", "Detail: Please set AFC properly."},
        {"Attenuation", "MANUAL", "Detail: Please set Attenuation properly."},
        {"SquelchState", "ON", "Detail: Please set SquelchState properly."},
        {"DFSquelchMode", "Norm", "DF_Settings: Please set DFMode properly."},
    };
    for (const auto &c : cases) {
        lines.clear();
        // Complete DF settings, so that the check comes to the mode; the
        // mode column is the one under test or one of its own.
        const bool mode = QByteArray(c.column) == "DFSquelchMode";
        const QByteArray modeName = mode ? QByteArray() : QByteArray("DFSquelchMode;");
        const QByteArray modeCell = mode ? QByteArray() : QByteArray("Gate;");
        const QByteArray file = "Type;Frequency;IFBandwidth;" + modeName + "DFMeasurementTime;DFSquelch;DFBandwidth;" + c.column
                                + "\nA;1;2;" + modeCell + "1;2;3;" + c.good + "\nB;3;4;" + modeCell + "1;2;3;Bogus\nC;5;6;"
                                + modeCell + "1;2;3;" + c.good + "\n";
        FrequencyStoreList list = holdingOne();
        list.SetValidate(false);
        EXPECT_TRUE(refused(importScan(file, list), list, 2, QString::fromLatin1(c.message))) << c.column;
    }
}

TEST_F(MemoryScanTest, BadInputCellsAreHandledInTheOrderOfTheFormatNotOfTheFile)
{
    // Two bad names in one row: the AFC comes before the DF mode, wherever
    // the columns stand.
    FrequencyStoreList list = holdingOne();
    EXPECT_TRUE(refused(importScan("DFSquelchMode;Type;Frequency;IFBandwidth;AFC\nBogus;A;1;2;Bogus\n", list), list, 1,
                        QStringLiteral("enum is not valid (classname=FFM_SettingsDetail,membername=m_aFC)")));
    lines.clear();
    EXPECT_TRUE(refused(importScan("DFSquelchMode;Type;Frequency;IFBandwidth;AFC\nBogus;A;1;2;ON\n", list), list, 1,
                        QStringLiteral("enum is not valid (classname=DF_Settings,membername=m_dFMode)")));
}

TEST_F(MemoryScanTest, BadInputFilesOfOtherListTypes)
{
    // A notepad file as this program writes it: its columns are memory scan
    // columns, the empty name behind the trailing ";" is none.
    FrequencyStoreList notePad;
    notePad.AppendFrequencyStoreEntry(receiver(QStringLiteral("N"), QStringLiteral("note"), QString(), 1.5, 2.5));
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("notepad.csv"), notePad, NotePad));
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(FileHandling().ImportCSV(path("notepad.csv"), list, MemoryScan));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(entries(notePad)[0], entries(list)[1]);

    // A target list, hand-written without trailing ";": the profile columns
    // are no memory scan columns.
    ASSERT_TRUE(importScan("Type;Comment;Frequency;IFBandwidth;AnalogDemod;Priority;ProfileID;SignalClass;"
                           "TransmissionSystem;ProfileName;ThreatClass\nT;t;1;2;AM;High;P1;S;TS;Name;Low\n",
                           list));
    ASSERT_EQ(3, entries(list).size());
    EXPECT_FALSE(entries(list)[2].IsProfile_DataSet());
    EXPECT_EQ(FFM_Settings::AnalogDemod_AM, entries(list)[2].GetFFM_Settings().GetAnalogDemod());
    EXPECT_TRUE(lines.empty());

    // A suppress file as this program writes it: one field more per row.
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("suppress.csv"), notePad, Suppress));
    FrequencyStoreList refusedList = holdingOne();
    EXPECT_TRUE(refused(FileHandling().ImportCSV(path("suppress.csv"), refusedList, MemoryScan), refusedList, 1, corrupt));

    // Bytes that are no text.
    lines.clear();
    static const char head[] = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR;Type\0;\xff\xfe\n\0;;\x80\x81\n";
    QByteArray bytes(head, int(sizeof(head)) - 1);
    for (int i = 0; i < 2000; ++i)
        bytes.append(char((i * 7919) % 256));
    FrequencyStoreList binary = holdingOne();
    bool result = true;
    EXPECT_NO_THROW(result = importScan(bytes, binary));
    EXPECT_FALSE(result);
    EXPECT_EQ(1, entries(binary).size());
    ASSERT_EQ(1, int(lines.size()));
    EXPECT_TRUE(texts()[0].startsWith(importError));
}

TEST_F(MemoryScanTest, BadInputAMissingFileIsTracedAndAddsNothing)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_TRUE(refused(FileHandling().ImportCSV(path("missing.csv"), list, MemoryScan), list, 1,
                        QStringLiteral("Can't open file for reading: '") + path("missing.csv") + QLatin1Char('\'')));
    // Through the entry point nothing reaches the caller but the trace.
    lines.clear();
    EXPECT_NO_THROW(FileHandling().ImportFrequencyStoreList(true, path("missing.csv"), list, MemoryScan));
    EXPECT_EQ(1, int(lines.size()));
    EXPECT_EQ(1, entries(list).size());
}

} // namespace
