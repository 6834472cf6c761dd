// Tests of the store list root: its usage enumeration, versioning, the XML and
// binary forms, whole documents through files and the compressed form, and
// what bad input does to it.

#include "recordtestsupport.h"
#include "tags.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::BinaryParsingException;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::InvalidXmlException;
using ORBELIN::OutOfRangeException;

namespace {

const QStringList kUsageNames = {"Undefined", "Resultlist", "NotOfInterest", "Target",     "WellKnown",
                                 "Known",     "Matching",   "Notepad",       "MemoryScan", "Suppress"};

Frequency frequency(double value, double min, double max, bool use)
{
    Frequency f;
    f.SetValue(value);
    f.SetMin(min);
    f.SetMax(max);
    f.SetUse(use);
    return f;
}

FFM_SettingsDetail fullDetail()
{
    FFM_SettingsDetail d;
    d.SetBFOFrequency(1.25);
    d.SetGain_Ctrl("AGC");
    d.SetMGCValue(-12.5);
    d.SetAGCDecay(0.75);
    d.SetAttenuation(FFM_SettingsDetail::Attenuation_MANUAL);
    d.SetAttenuationValue(10.5);
    d.SetAttenuationHoldTime(3.25);
    d.SetAFC(FFM_SettingsDetail::AFC_ON);
    d.SetActive(true);
    d.SetAlarm(false);
    d.SetChannelNo(-7);
    d.SetSquelchState(FFM_SettingsDetail::SquelchState_ON);
    d.SetSquelchValue(42);
    d.SetAnalogFrequencyOffset(-0.5);
    d.SetAnalogBandwidth(12000.0);
    d.SetGainControlTime(FFM_SettingsDetail::GainControlTime_Slow);
    d.SetPreselection(FFM_SettingsDetail::Preselection_LOW_DISTORT);
    d.SetLevelDetector(FFM_SettingsDetail::LevelDetector_RMS);
    d.SetMeasuremetTime(samples::utc(2020, 2, 29, 23, 59, 58, 123));
    d.SetInvertedFMState("inverted");
    d.SetInverseFrequency(455.25);
    d.SetAntennaPolarisation(FFM_SettingsDetail::AntennaPolarisation_LEFT);
    d.SetAntPreAmp(FFM_SettingsDetail::AntPreAmp_ON);
    return d;
}

FFM_Settings fullFFM()
{
    FFM_Settings s;
    s.SetFrequency(frequency(101100000.0, 101000000.0, 101200000.0, false));
    IFBandwidth bw;
    bw.SetValue(9000.0);
    bw.SetMin(1000.0);
    bw.SetMax(20000.0);
    s.SetIFBandwidth(bw);
    s.SetIFStep(12.5);
    s.SetIFStepAuto(true);
    s.SetBandwidthMode(FFM_Settings::BandwidthMode_Coupled);
    s.SetAnalogDemod(FFM_Settings::AnalogDemod_USB);
    s.SetLevel(-95.5);
    s.SetUpperLevel(-20.25);
    s.SetDetail(fullDetail());
    s.SetTunerMode(FFM_Settings::TunerMode_PanoramaScan);
    PScanSettings p;
    p.SetStartFrequency(100000000.0);
    p.SetStopFrequency(108000000.0);
    p.SetFrequencyStep(25000.0);
    s.SetPScanSettings(p);
    return s;
}

ShortTime_Settings fullShortTime()
{
    ShortTime_Settings s;
    s.SetHopsPerSecond(0.125);
    s.SetUseHopsPerSecond(true);
    ShortTime_SettingsRange range;
    range.SetUse(false);
    range.SetStartFreq(30000000.0);
    range.SetStopFreq(88000000.0);
    range.SetFreqSpacing(25000.0);
    s.SetRange(range);
    SignalLength length;
    length.SetMin(0.5);
    length.SetMax(2.75);
    length.SetUse(true);
    s.SetSignalLength(length);
    Bandwidth bw;
    bw.SetValue(25000.0);
    bw.SetMin(12500.0);
    bw.SetMax(50000.0);
    bw.SetUse(false);
    s.SetBandwidth(bw);
    s.SetSnapshotLength(1.5);
    ShortTime_SettingsDetail detail;
    detail.SetAnalysisDepth("deep");
    detail.SetNoiseLevel(-110.5);
    detail.SetNoiseLevelMode("auto");
    detail.SetOperatingMode("hop");
    detail.SetSignalLevelMax(-30.25);
    detail.SetSNRMin(6.0);
    s.SetDetail(detail);
    s.SetBreak(0.25);
    s.AppendFrequency(frequency(31000000.0, 30000000.0, 32000000.0, true));
    s.AppendFrequency(frequency(45500000.0, 45000000.0, 46000000.0, false));
    s.AppendFrequency(frequency(87900000.0, 87000000.0, 88000000.0, true));
    return s;
}

FrequencyStoreEntry ffmEntry()
{
    FrequencyStoreEntry e;
    e.SetUsage(FrequencyStoreEntry::Usage_Target);
    e.SetID("ID-1");
    e.SetType("FFM");
    e.SetAntenna("HE600");
    e.SetComment("Grüße, <&> \"quoted\"");
    e.SetFFM_Settings(fullFFM());
    e.SetAdditionalInfo("first");
    return e;
}

FrequencyStoreEntry shortTimeEntry()
{
    FrequencyStoreEntry e;
    e.SetUsage(FrequencyStoreEntry::Usage_Known);
    e.SetID("ID-2");
    e.SetType("");
    e.SetAntenna("whip");
    e.SetComment("hopper");
    e.SetShortTime_Settings(fullShortTime());
    e.SetAdditionalInfo("second");
    return e;
}

Targetareas areas()
{
    Targetareas t;
    Area a;
    a.SetName("North");
    Coordinate c1;
    c1.SetLongitude(16.37);
    c1.SetLatitude(48.2);
    Coordinate c2;
    c2.SetLongitude(-0.125);
    c2.SetLatitude(51.5);
    a.AppendCoordinate(c1);
    a.AppendCoordinate(c2);
    a.SetScriptID("script-7");
    t.AppendArea(a);
    return t;
}

FrequencyStoreList fullList()
{
    FrequencyStoreList list;
    list.SetName("Watch list");
    list.SetUsage(FrequencyStoreList::Usage_MemoryScan);
    list.SetTimstamp(samples::utc(2021, 3, 4, 5, 6, 7, 89));
    list.SetTargetareas(areas());
    list.AppendFrequencyStoreEntry(ffmEntry());
    list.AppendFrequencyStoreEntry(shortTimeEntry());
    FrequencyStoreEntry third = ffmEntry();
    third.SetID("ID-3");
    third.GetFFM_Settings().ResetDetail();
    list.AppendFrequencyStoreEntry(third);
    return list;
}

// An entry that passes Check but is not complete: a type, no branch.
FrequencyStoreEntry entryWithoutBranch()
{
    FrequencyStoreEntry e;
    e.SetType("orphan");
    return e;
}

QString listDocument(const QString &versionAttribute, const QString &content)
{
    return QStringLiteral("<FrequencyStoreList%1>%2</FrequencyStoreList>").arg(versionAttribute, content);
}

} // namespace

// --- enumeration ----------------------------------------------------------------

TEST(StoreListUsage, NamesInOrder)
{
    EXPECT_EQ(kUsageNames, FrequencyStoreList::GetUsages());
    FrequencyStoreList list;
    for (int i = 0; i < kUsageNames.size(); ++i) {
        EXPECT_EQ(kUsageNames.at(i), list.UsageToName(FrequencyStoreList::Usage(i)));
        EXPECT_EQ(i, int(list.NameToUsage(kUsageNames.at(i))));
    }
    EXPECT_EQ(3, int(FrequencyStoreList::Usage_Target));
    EXPECT_EQ(9, int(FrequencyStoreList::Usage_Suppress));
}

TEST(StoreListUsage, GuiListEqualsNamesWithoutTranslation)
{
    EXPECT_EQ(FrequencyStoreList::GetUsages(), FrequencyStoreList::GetGUIUsages());
}

TEST(StoreListUsage, GuiListGoesThroughTranslation)
{
    ScopedMarkingTranslator translator;
    ASSERT_TRUE(translator.installed());
    EXPECT_EQ(ScopedMarkingTranslator::marked("Morvane::FrequencyStoreList", kUsageNames),
              FrequencyStoreList::GetGUIUsages());
    // The name list itself is not translated.
    EXPECT_EQ(kUsageNames, FrequencyStoreList::GetUsages());
}

TEST(StoreListUsage, TrGivesTextBack)
{
    EXPECT_EQ(QString("Target"), FrequencyStoreList::tr("Target"));
    EXPECT_EQ(QString("Grüße"), FrequencyStoreList::trUtf8("Grüße"));
    ScopedMarkingTranslator translator;
    ASSERT_TRUE(translator.installed());
    EXPECT_EQ(QString("Morvane::FrequencyStoreList|Known"), FrequencyStoreList::tr("Known"));
    EXPECT_EQ(QString("Morvane::FrequencyStoreList|Known"), FrequencyStoreList::trUtf8("Known"));
}

TEST(StoreListUsage, ToNameOutsideTheListIsNull)
{
    FrequencyStoreList list;
    EXPECT_TRUE(list.UsageToName(FrequencyStoreList::Usage(-1)).isNull());
    EXPECT_TRUE(list.UsageToName(FrequencyStoreList::Usage(10)).isNull());
    EXPECT_FALSE(list.UsageToName(FrequencyStoreList::Usage(9)).isNull());
}

TEST(StoreListUsage, UnknownNameGivesInvalidSlot)
{
    FrequencyStoreList list;
    EXPECT_EQ(-1, int(list.GetInvalidUsage()));
    EXPECT_EQ(-1, int(list.NameToUsage("Nothing")));
    list.SetInvalidUsage(FrequencyStoreList::Usage(77));
    EXPECT_EQ(77, int(list.GetInvalidUsage()));
    EXPECT_EQ(77, int(list.NameToUsage("Nothing")));
    // The invalid slot changes no bit and is not a test of validity.
    EXPECT_FALSE(list.IsUsageSet());
    EXPECT_FALSE(list.IsValidUsage(FrequencyStoreList::Usage(77)));
    EXPECT_EQ(3, int(list.NameToUsage("Target")));
}

TEST(StoreListUsage, NameLookupIsCaseSensitive)
{
    FrequencyStoreList list;
    EXPECT_EQ(-1, int(list.NameToUsage("target")));
    EXPECT_EQ(-1, int(list.NameToUsage("TARGET")));
    EXPECT_EQ(-1, int(list.NameToUsage(" Target")));
    EXPECT_EQ(int(FrequencyStoreList::Usage_Target), int(list.NameToUsage("Target")));
}

TEST(StoreListUsage, ValidRange)
{
    FrequencyStoreList list;
    EXPECT_FALSE(list.IsValidUsage(FrequencyStoreList::Usage(-1)));
    EXPECT_TRUE(list.IsValidUsage(FrequencyStoreList::Usage(0)));
    EXPECT_TRUE(list.IsValidUsage(FrequencyStoreList::Usage(9)));
    EXPECT_FALSE(list.IsValidUsage(FrequencyStoreList::Usage(10)));
}

TEST(StoreListUsage, InvalidValueThrowsWithValidation)
{
    FrequencyStoreList list;
    list.SetUsage(FrequencyStoreList::Usage_Notepad);
    EXPECT_THROW_MESSAGE(list.SetUsage(FrequencyStoreList::Usage(10)), OutOfRangeException,
                         "enum is not valid (classname=FrequencyStoreList,membername=m_usage)");
    EXPECT_THROW_MESSAGE(list.SetUsage(FrequencyStoreList::Usage(-1)), OutOfRangeException,
                         "enum is not valid (classname=FrequencyStoreList,membername=m_usage)");
    EXPECT_EQ(FrequencyStoreList::Usage_Notepad, list.GetUsage());
    EXPECT_EQ(QString("Notepad"), list.GetUsageAsString());
}

TEST(StoreListUsage, InvalidValueStoredWithoutValidation)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    list.SetUsage(FrequencyStoreList::Usage(-1));
    EXPECT_TRUE(list.IsUsageSet());
    EXPECT_EQ(-1, int(list.GetUsage()));
    EXPECT_TRUE(list.GetUsageAsString().isNull());
    EXPECT_THROW_MESSAGE(list.Check(), OutOfRangeException, "FrequencyStoreList: Please set Usage properly.");
}

// --- data, defaults, append ----------------------------------------------------------

TEST(StoreListData, WithoutEntriesHasNoDataButAnyData)
{
    FrequencyStoreList list;
    EXPECT_FALSE(list.HasData());
    EXPECT_FALSE(list.AnyData());
    list.SetName("only a name");
    EXPECT_FALSE(list.HasData());
    EXPECT_TRUE(list.AnyData());
    list.AppendFrequencyStoreEntry(ffmEntry());
    EXPECT_TRUE(list.HasData());
}

TEST(StoreListData, AnyDataOfEachMember)
{
    FrequencyStoreList byUsage;
    byUsage.SetUsage(FrequencyStoreList::Usage_Undefined);
    EXPECT_TRUE(byUsage.AnyData());
    FrequencyStoreList byTime;
    byTime.SetTimstamp(samples::utc(2000, 1, 1, 0, 0, 0, 0));
    EXPECT_TRUE(byTime.AnyData());
    FrequencyStoreList byAreas;
    byAreas.SetTargetareas(areas());
    EXPECT_TRUE(byAreas.AnyData());
    EXPECT_FALSE(byAreas.HasData());
}

TEST(StoreListData, NullNameRefusedWithValidation)
{
    FrequencyStoreList list;
    list.SetName("kept");
    EXPECT_THROW_MESSAGE(list.SetName(QString()), OutOfRangeException, "FrequencyStoreList: Please set Name properly.");
    EXPECT_EQ(QString("kept"), list.GetName());
    list.SetName("");
    EXPECT_TRUE(list.IsNameSet());
    EXPECT_FALSE(list.GetName().isNull());
}

TEST(StoreListData, NullNameStoredWithoutValidationAndFailsCheck)
{
    FrequencyStoreList list;
    list.AppendFrequencyStoreEntry(ffmEntry());
    list.SetValidate(false);
    list.SetName(QString());
    EXPECT_TRUE(list.IsNameSet());
    EXPECT_TRUE(list.GetName().isNull());
    EXPECT_THROW_MESSAGE(list.Check(), OutOfRangeException, "FrequencyStoreList: Please set Name properly.");
}

TEST(StoreListData, AppendIncompleteEntryRefusedWithValidation)
{
    FrequencyStoreList list;
    EXPECT_THROW_MESSAGE(list.AppendFrequencyStoreEntry(FrequencyStoreEntry()), IncompleteDefinitionException,
                         "FrequencyStoreList: Tried to append not completely defined or invalid item "
                         "FrequencyStoreEntry.");
    const FrequencyStoreList &view = list;
    EXPECT_EQ(0, view.GetFrequencyStoreEntry().size());
    EXPECT_FALSE(list.IsFrequencyStoreEntrySet());
}

TEST(StoreListData, AppendIncompleteEntryGrowsWithoutValidation)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    list.AppendFrequencyStoreEntry(FrequencyStoreEntry());
    EXPECT_EQ(1, list.GetFrequencyStoreEntry().size());
    EXPECT_TRUE(list.IsFrequencyStoreEntrySet());
}

TEST(StoreListData, CheckWantsTheEntriesMember)
{
    FrequencyStoreList list;
    list.SetName("n");
    EXPECT_THROW_MESSAGE(list.Check(), OutOfRangeException, "FrequencyStoreList: Please set FrequencyStoreEntry properly.");
    // With validation on, writing runs that Check first and writes nothing.
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW(list.GetXml(writer), OutOfRangeException);
    EXPECT_TRUE(text.isEmpty());
}

TEST(StoreListData, CheckReachesEveryEntry)
{
    FrequencyStoreList list;
    list.AppendFrequencyStoreEntry(ffmEntry());
    FrequencyStoreEntry bad = ffmEntry();
    bad.SetValidate(false);
    bad.SetComment(QString());
    list.SetValidate(false);
    list.AppendFrequencyStoreEntry(bad);
    EXPECT_THROW_MESSAGE(list.Check(), OutOfRangeException, "FrequencyStoreEntry: Please set Comment properly.");
}

TEST(StoreListData, WritingIncompleteEntryThrows)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    list.AppendFrequencyStoreEntry(entryWithoutBranch());
    list.SetValidate(true);
    EXPECT_NO_THROW(list.Check());
    EXPECT_THROW_MESSAGE(list.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for FrequencyStoreEntry are not set properly in 'FrequencyStoreList'.");
}

TEST(StoreListData, BinaryOfIncompleteEntryCannotBeReadBack)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    list.AppendFrequencyStoreEntry(entryWithoutBranch());
    list.SetValidate(true);
    QByteArray bytes = list.GetBinaryRepresentationAsQByteArray();
    // The entries frame counts one item but holds none.
    const QByteArray entries = valueOf(bodyOf(bytes), TagEntries);
    EXPECT_EQ(be32(1), entries);
    FrequencyStoreList back;
    EXPECT_FALSE(back.SetBinaryRepresentation(bytes));
    EXPECT_FALSE(back.AnyData());
}

TEST(StoreListData, DefaultsComeBackWithResetToDefault)
{
    FrequencyStoreList list;
    list.SetDefaultName("Default name");
    list.SetDefaultUsage(FrequencyStoreList::Usage_Suppress);
    list.SetName("current");
    list.ResetName();
    EXPECT_TRUE(list.GetName().isNull());
    list.ResetToDefault();
    EXPECT_EQ(QString("Default name"), list.GetName());
    EXPECT_TRUE(list.IsNameSet());
    EXPECT_EQ(FrequencyStoreList::Usage_Suppress, list.GetUsage());
    EXPECT_TRUE(list.IsUsageSet());
    EXPECT_FALSE(list.IsTimstampSet());
}

// --- versioning in XML --------------------------------------------------------------

TEST(StoreListVersion, VersionAndInitialVersion)
{
    FrequencyStoreList list;
    EXPECT_EQ(QString("1.2"), list.GetVersion());
    EXPECT_TRUE(list.GetInitialVersionLoaded().isEmpty());
    EXPECT_TRUE(compactXml(fullList()).startsWith("<FrequencyStoreList Version=\"1.2\">"));
}

namespace {

// Reads `document` into a list that holds a current name and has defaults for
// name and usage, and tells what came of it.
struct VersionProbe
{
    FrequencyStoreList list;
    VersionProbe()
    {
        list.SetDefaultName("Default name");
        list.SetDefaultUsage(FrequencyStoreList::Usage_WellKnown);
        list.SetName("held");
    }
    void read(const QString &document) { list.SetXmlString(document, true); }
};

// An unknown element with a known child inside it.
const QString kUnknownWithName = QStringLiteral("<Extra><Name>inner</Name><More>1</More></Extra>");

} // namespace

TEST(StoreListVersion, DocumentWithoutVersionCountsAsOlder)
{
    VersionProbe probe;
    probe.read(listDocument("", kUnknownWithName + "<Usage>Target</Usage>"));
    EXPECT_TRUE(probe.list.GetInitialVersionLoaded().isEmpty());
    EXPECT_EQ(0.0f, probe.list.GetInitialVersionLoaded().toFloat());
    // Defaults first, then the content; the unknown element is skipped.
    EXPECT_EQ(QString("Default name"), probe.list.GetName());
    EXPECT_EQ(FrequencyStoreList::Usage_Target, probe.list.GetUsage());
}

TEST(StoreListVersion, Version10ResetsToDefaultAndSkipsUnknown)
{
    VersionProbe probe;
    probe.read(listDocument(" Version=\"1.0\"", kUnknownWithName));
    EXPECT_EQ(QString("1.0"), probe.list.GetInitialVersionLoaded());
    EXPECT_EQ(QString("Default name"), probe.list.GetName());
    EXPECT_TRUE(probe.list.IsNameSet());
    EXPECT_EQ(FrequencyStoreList::Usage_WellKnown, probe.list.GetUsage());
    EXPECT_TRUE(probe.list.IsUsageSet());
}

TEST(StoreListVersion, Version10ContentIsReadAfterTheReset)
{
    VersionProbe probe;
    probe.read(listDocument(" Version=\"1.0\"", kUnknownWithName + "<Usage>Target</Usage>"));
    EXPECT_EQ(QString("1.0"), probe.list.GetInitialVersionLoaded());
    EXPECT_EQ(QString("Default name"), probe.list.GetName());
    EXPECT_TRUE(probe.list.IsUsageSet());
    EXPECT_EQ(FrequencyStoreList::Usage_Target, probe.list.GetUsage());
}

TEST(StoreListVersion, Version11ContentComesAfterDefaults)
{
    VersionProbe probe;
    probe.read(listDocument(" Version=\"1.1\"", "<Usage>Matching</Usage>" + kUnknownWithName));
    EXPECT_EQ(QString("1.1"), probe.list.GetInitialVersionLoaded());
    EXPECT_EQ(QString("Default name"), probe.list.GetName());
    EXPECT_EQ(FrequencyStoreList::Usage_Matching, probe.list.GetUsage());
}

TEST(StoreListVersion, Version110CountsAsOlderThan12)
{
    // Compared as numbers, 1.10 is 1.1, which is below 1.2.
    VersionProbe probe;
    probe.read(listDocument(" Version=\"1.10\"", kUnknownWithName));
    EXPECT_EQ(QString("1.10"), probe.list.GetInitialVersionLoaded());
    EXPECT_EQ(QString("Default name"), probe.list.GetName());
}

TEST(StoreListVersion, CurrentVersionKeepsWhatTheListHeld)
{
    VersionProbe probe;
    probe.read(listDocument(" Version=\"1.2\"", "<Usage>Known</Usage>"));
    EXPECT_EQ(QString("1.2"), probe.list.GetInitialVersionLoaded());
    EXPECT_EQ(QString("held"), probe.list.GetName());
    EXPECT_EQ(FrequencyStoreList::Usage_Known, probe.list.GetUsage());
}

TEST(StoreListVersion, CurrentVersionUnknownElementThrows)
{
    for (const char *version : {"1.2", "2.0"}) {
        FrequencyStoreList list;
        EXPECT_THROW_MESSAGE(
            list.SetXmlString(listDocument(QStringLiteral(" Version=\"%1\"").arg(version), kUnknownWithName), true),
            InvalidXmlException, "Unknown Tag 'Extra' in 'FrequencyStoreList'.");
    }
    // Without rethrowing, the read fails and leaves the list as it was.
    FrequencyStoreList other;
    other.SetName("before");
    EXPECT_FALSE(other.SetXmlString(listDocument(" Version=\"1.2\"", "<Name>after</Name>" + kUnknownWithName)));
    EXPECT_EQ(QString("before"), other.GetName());
}

TEST(StoreListVersion, NewerVersionKeepsAndThrowsOnUnknown)
{
    VersionProbe probe;
    probe.read(listDocument(" Version=\"2.5\"", "<Usage>Known</Usage>"));
    EXPECT_EQ(QString("2.5"), probe.list.GetInitialVersionLoaded());
    EXPECT_EQ(QString("held"), probe.list.GetName());
    for (const char *version : {"2.0", "2.5"}) {
        FrequencyStoreList list;
        EXPECT_THROW_MESSAGE(
            list.SetXmlString(listDocument(QStringLiteral(" Version=\"%1\"").arg(version), "<Future/>"), true),
            InvalidXmlException, "Unknown Tag 'Future' in 'FrequencyStoreList'.");
    }
}

TEST(StoreListVersion, UnknownElementWithoutValidationGivesItsChildrenToTheList)
{
    for (const char *version : {"1.2", "2.5"}) {
        FrequencyStoreList list;
        list.SetValidate(false);
        ASSERT_TRUE(list.SetXmlString(
            listDocument(QStringLiteral(" Version=\"%1\"").arg(version),
                         "<Wrapper><Name>inner</Name><Deeper><Usage>Target</Usage></Deeper></Wrapper>"
                         "<Timstamp>2021-03-04T05:06:07,089Z</Timstamp>"),
            true))
            << version;
        EXPECT_EQ(QString("inner"), list.GetName()) << version;
        EXPECT_EQ(FrequencyStoreList::Usage_Target, list.GetUsage()) << version;
        EXPECT_EQ(samples::utc(2021, 3, 4, 5, 6, 7, 89), list.GetTimstamp()) << version;
    }
}

TEST(StoreListVersion, OlderDocumentSkipsUnknownEvenWithoutValidation)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    ASSERT_TRUE(list.SetXmlString(listDocument(" Version=\"1.1\"", kUnknownWithName + "<Usage>Known</Usage>"), true));
    EXPECT_FALSE(list.IsNameSet());
    EXPECT_EQ(FrequencyStoreList::Usage_Known, list.GetUsage());
}

TEST(StoreListVersion, TimstampIsTheOnlySpellingRead)
{
    const QString time = QStringLiteral("2021-03-04T05:06:07,089Z");
    FrequencyStoreList right;
    ASSERT_TRUE(right.SetXmlString(listDocument(" Version=\"1.2\"", "<Timstamp>" + time + "</Timstamp>"), true));
    EXPECT_TRUE(right.IsTimstampSet());
    EXPECT_EQ(samples::utc(2021, 3, 4, 5, 6, 7, 89), right.GetTimstamp());

    FrequencyStoreList older;
    ASSERT_TRUE(older.SetXmlString(listDocument(" Version=\"1.1\"", "<Timestamp>" + time + "</Timestamp>"), true));
    EXPECT_FALSE(older.IsTimstampSet());

    FrequencyStoreList current;
    EXPECT_THROW_MESSAGE(
        current.SetXmlString(listDocument(" Version=\"1.2\"", "<Timestamp>" + time + "</Timestamp>"), true),
        InvalidXmlException, "Unknown Tag 'Timestamp' in 'FrequencyStoreList'.");

    // Written, the member keeps the spelling.
    FrequencyStoreList written;
    written.SetTimstamp(samples::utc(2021, 3, 4, 5, 6, 7, 89));
    written.AppendFrequencyStoreEntry(ffmEntry());
    EXPECT_TRUE(compactXml(written).contains("<Timstamp>" + time + "</Timstamp>"));
}

// --- binary -----------------------------------------------------------------------------

TEST(StoreListBinary, VersionFirstInQStringForm)
{
    FrequencyStoreList list;
    list.SetName("N");
    list.AppendFrequencyStoreEntry(ffmEntry());
    const QByteArray rep = list.GetBinaryRepresentationAsQByteArray();
    const QByteArray head = QByteArray::fromHex("fa5bfb4d");
    EXPECT_EQ(head, rep.left(4));
    const QByteArray body = bodyOf(rep);
    // Tag, length 10, then the QString "1.2": byte length 6 and UTF-16.
    EXPECT_EQ(QByteArray::fromHex("e25fbba8" "0000000a" "00000006" "0031002e0032"), body.left(18));
    const QVector<quint32> tags = tagsOf(body);
    ASSERT_FALSE(tags.isEmpty());
    EXPECT_EQ(VersionTag, tags.first());
    EXPECT_EQ((QVector<quint32>{VersionTag, TagName, TagEntries}), tags);
    // The name in the UTF-8 form of a text member.
    EXPECT_EQ(QByteArray::fromHex("00000001" "4e"), valueOf(body, TagName));
}

TEST(StoreListBinary, MembersInTableOrder)
{
    const QByteArray body = bodyOf(fullList().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{VersionTag, TagName, TagUsage, TagTimstamp, TagTargetareas, TagEntries}),
              tagsOf(body));
    EXPECT_EQ(utf8Value("MemoryScan"), valueOf(body, TagUsage));
    EXPECT_EQ(utf8Value("2021-03-04T05:06:07,089Z"), valueOf(body, TagTimstamp));
    // The entries frame starts with the count.
    EXPECT_EQ(be32(3), valueOf(body, TagEntries).left(4));
}

TEST(StoreListBinary, WrittenAndReadBackHasInitialVersion12)
{
    FrequencyStoreList list = fullList();
    QByteArray rep = list.GetBinaryRepresentationAsQByteArray();
    FrequencyStoreList back;
    ASSERT_TRUE(back.SetBinaryRepresentation(rep));
    EXPECT_EQ(QString("1.2"), back.GetInitialVersionLoaded());
    EXPECT_TRUE(back == list);
    for (const FrequencyStoreEntry &e : back.GetFrequencyStoreEntry())
        EXPECT_EQ(QString("2.0"), e.GetInitialVersionLoaded());
}

TEST(StoreListBinary, OlderVersionResetsToDefaultBeforeContent)
{
    for (const char *version : {"1.0", "1.1", "1.10"}) {
        VersionProbe probe;
        const QByteArray body = versionFrame(version) + frame(TagUsage, utf8Value("Target"));
        QByteArray rep = representation(FrequencyStoreList::GetId(), body);
        ASSERT_TRUE(probe.list.SetBinaryRepresentation(rep)) << version;
        EXPECT_EQ(QString(version), probe.list.GetInitialVersionLoaded());
        EXPECT_EQ(QString("Default name"), probe.list.GetName()) << version;
        EXPECT_EQ(FrequencyStoreList::Usage_Target, probe.list.GetUsage()) << version;
    }
}

TEST(StoreListBinary, CurrentAndNewerVersionKeepWhatTheListHeld)
{
    for (const char *version : {"1.2", "2.5"}) {
        VersionProbe probe;
        QByteArray rep = representation(FrequencyStoreList::GetId(),
                                        versionFrame(version) + frame(TagUsage, utf8Value("Target")));
        ASSERT_TRUE(probe.list.SetBinaryRepresentation(rep)) << version;
        EXPECT_EQ(QString("held"), probe.list.GetName()) << version;
        EXPECT_EQ(FrequencyStoreList::Usage_Target, probe.list.GetUsage());
    }
}

TEST(StoreListBinary, UnknownTagSkippedInEveryVersion)
{
    for (const char *version : {"1.0", "1.2", "2.5"}) {
        FrequencyStoreList list;
        const QByteArray body = versionFrame(version) + frame(TagName, utf8Value("A"))
            + frame(0x12345678u, QByteArray("\x01\x02\x03\x04\x05", 5)) + frame(TagUsage, utf8Value("Known"));
        QByteArray rep = representation(FrequencyStoreList::GetId(), body);
        ASSERT_TRUE(list.SetBinaryRepresentation(rep)) << version;
        EXPECT_EQ(QString("A"), list.GetName());
        EXPECT_EQ(FrequencyStoreList::Usage_Known, list.GetUsage());
    }
}

TEST(StoreListBinary, TimstampReadOnlyUnderItsTag)
{
    const QByteArray time = utf8Value("2021-03-04T05:06:07,089Z");
    FrequencyStoreList right;
    QByteArray rep = representation(FrequencyStoreList::GetId(), versionFrame("1.2") + frame(TagTimstamp, time));
    ASSERT_TRUE(right.SetBinaryRepresentation(rep));
    EXPECT_EQ(samples::utc(2021, 3, 4, 5, 6, 7, 89), right.GetTimstamp());
    FrequencyStoreList other;
    QByteArray wrong = representation(FrequencyStoreList::GetId(), versionFrame("1.2") + frame(0xd1e86c7bu, time));
    ASSERT_TRUE(other.SetBinaryRepresentation(wrong));
    EXPECT_FALSE(other.IsTimstampSet());
}

TEST(StoreListBinary, LengthErrorInBody)
{
    const QByteArray body = versionFrame("1.2") + frame(TagName, utf8Value("A"));
    for (int delta : {-1, 1}) {
        QByteArray bytes = be32(quint32(FrequencyStoreList::GetId())) + be32(quint32(body.size() + delta)) + body
            + QByteArray(4, '\0');
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        QDataStream stream(&buffer);
        prepare(stream);
        qint32 id = 0;
        qint32 length = 0;
        stream >> id >> length;
        FrequencyStoreList list;
        EXPECT_THROW_MESSAGE(list.SetBinary(stream, length), BinaryParsingException,
                             "FrequencyStoreList::SetBinary(...): Length error occurred during processing of binary "
                             "representation");
    }
}

// --- whole documents ----------------------------------------------------------------------

TEST(StoreListRoundTrip, FullListThroughXml)
{
    const FrequencyStoreList list = fullList();
    FrequencyStoreList back;
    ASSERT_TRUE(back.SetXmlString(list.GetXmlString(), true));
    EXPECT_TRUE(back == list);
    EXPECT_EQ(QString("1.2"), back.GetInitialVersionLoaded());
    EXPECT_EQ(compactXml(list), compactXml(back));
    ASSERT_EQ(3, back.GetFrequencyStoreEntry().size());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings,
              back.GetFrequencyStoreEntry().at(0).GetChoiceFrequencyStoreEntry());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings,
              back.GetFrequencyStoreEntry().at(1).GetChoiceFrequencyStoreEntry());
    EXPECT_EQ(3, back.GetFrequencyStoreEntry().at(1).GetShortTime_Settings().GetFrequency().size());
    EXPECT_TRUE(back.GetFrequencyStoreEntry().at(0).GetFFM_Settings().GetDetail()
                == fullDetail());
}

TEST(StoreListRoundTrip, FullListThroughXmlAndBinaryInMemory)
{
    const FrequencyStoreList back = roundTrip(fullList()).fromBinary;
    EXPECT_EQ(QString("1.2"), back.GetInitialVersionLoaded());
}

TEST(StoreListRoundTrip, ChangedListIsNotEqual)
{
    const FrequencyStoreList list = fullList();
    FrequencyStoreList back;
    ASSERT_TRUE(back.SetXmlString(list.GetXmlString(), true));
    back.GetFrequencyStoreEntry()[1].GetShortTime_Settings().GetFrequency()[2].SetValue(1.0);
    EXPECT_FALSE(back == list);
    EXPECT_TRUE(back != list);
}

TEST(StoreListRoundTrip, FullListThroughFiles)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const FrequencyStoreList list = fullList();

    const QString xmlPath = dir.filePath("store.xml");
    ASSERT_TRUE(list.SaveXml(xmlPath));
    QFile xmlFile(xmlPath);
    ASSERT_TRUE(xmlFile.open(QIODevice::ReadOnly));
    const QByteArray xmlBytes = xmlFile.readAll();
    xmlFile.close();
    EXPECT_TRUE(xmlBytes.contains("<FrequencyStoreList Version=\"1.2\">"));
    EXPECT_TRUE(xmlBytes.contains(QString("Grüße").toUtf8()));

    FrequencyStoreList fromName;
    ASSERT_TRUE(fromName.LoadXml(xmlPath));
    EXPECT_TRUE(fromName == list);
    FrequencyStoreList fromFile;
    QFile again(xmlPath);
    ASSERT_TRUE(fromFile.LoadXml(&again));
    EXPECT_TRUE(fromFile == list);

    const QString binPath = dir.filePath("store.bin");
    {
        QFile out(binPath);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        const QByteArray rep = list.GetBinaryRepresentationAsQByteArray();
        ASSERT_EQ(rep.size(), out.write(rep));
    }
    QFile in(binPath);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly));
    FrequencyStoreList fromBinary;
    ASSERT_TRUE(fromBinary.LoadBinary(&in));
    EXPECT_TRUE(fromBinary == list);
    EXPECT_EQ(QString("1.2"), fromBinary.GetInitialVersionLoaded());
}

TEST(StoreListRoundTrip, FullListThroughCompressedForm)
{
    const FrequencyStoreList list = fullList();
    const QByteArray plain = list.GetBinaryRepresentationAsQByteArray();
    const QByteArray compressed = list.GetCompressedBinaryRepresentationAsQByteArray(9);
    EXPECT_EQ(plain, qUncompress(compressed));
    FrequencyStoreList back;
    ASSERT_TRUE(back.SetCompressedBinaryRepresentation(compressed));
    EXPECT_TRUE(back == list);

    // The stream form holds the compressed array as a QByteArray.
    QByteArray streamed;
    {
        QBuffer buffer(&streamed);
        buffer.open(QIODevice::WriteOnly);
        QDataStream stream(&buffer);
        prepare(stream);
        list.GetCompressedBinaryRepresentation(stream, 5);
    }
    QDataStream in(streamed);
    prepare(in);
    QByteArray held;
    in >> held;
    EXPECT_EQ(plain, qUncompress(held));
}

TEST(StoreListRoundTrip, ListWithoutValidationRoundTrips)
{
    FrequencyStoreList list = fullList();
    list.SetValidate(false);
    FrequencyStoreList back;
    back.SetValidate(false);
    ASSERT_TRUE(back.SetXmlString(list.GetXmlString(), true));
    EXPECT_TRUE(back == list);
    QByteArray rep = list.GetBinaryRepresentationAsQByteArray();
    FrequencyStoreList fromBinary;
    fromBinary.SetValidate(false);
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(rep));
    EXPECT_TRUE(fromBinary == list);
}

// --- bad input ---------------------------------------------------------------------------------

TEST(StoreListBadInput, UnknownUsageNameWithValidation)
{
    FrequencyStoreList list;
    list.SetName("before");
    const QString doc = listDocument(" Version=\"1.2\"", "<Name>after</Name><Usage>target</Usage>");
    EXPECT_THROW_MESSAGE(list.SetXmlString(doc, true), OutOfRangeException,
                         "enum is not valid (classname=FrequencyStoreList,membername=m_usage)");
    FrequencyStoreList quiet;
    quiet.SetName("before");
    EXPECT_FALSE(quiet.SetXmlString(doc));
    EXPECT_EQ(QString("before"), quiet.GetName());
    EXPECT_FALSE(quiet.IsUsageSet());
}

TEST(StoreListBadInput, UnknownUsageNameWithoutValidation)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    ASSERT_TRUE(list.SetXmlString(listDocument(" Version=\"1.2\"", "<Usage>Unheard</Usage>"), true));
    EXPECT_TRUE(list.IsUsageSet());
    EXPECT_EQ(-1, int(list.GetUsage()));
    // The invalid slot is what an unknown name becomes.
    FrequencyStoreList other;
    other.SetValidate(false);
    other.SetInvalidUsage(FrequencyStoreList::Usage(55));
    ASSERT_TRUE(other.SetXmlString(listDocument(" Version=\"1.2\"", "<Usage>Unheard</Usage>"), true));
    EXPECT_EQ(55, int(other.GetUsage()));
}

TEST(StoreListBadInput, UnknownUsageNameInBinary)
{
    QByteArray rep = representation(FrequencyStoreList::GetId(), versionFrame("1.2") + frame(TagUsage, utf8Value("TARGET")));
    FrequencyStoreList list;
    EXPECT_FALSE(list.SetBinaryRepresentation(rep));
    EXPECT_FALSE(list.IsUsageSet());
    FrequencyStoreList lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetBinaryRepresentation(rep));
    EXPECT_TRUE(lax.IsUsageSet());
    EXPECT_EQ(-1, int(lax.GetUsage()));
}

TEST(StoreListBadInput, TruncatedBinaryLeavesListUnchanged)
{
    const QByteArray rep = fullList().GetBinaryRepresentationAsQByteArray();
    FrequencyStoreList target;
    target.SetName("untouched");
    target.AppendFrequencyStoreEntry(shortTimeEntry());
    const FrequencyStoreList before = target;
    const QString beforeXml = compactXml(before);
    for (int n = 0; n < rep.size(); ++n) {
        QByteArray cut = rep.left(n);
        ASSERT_FALSE(target.SetBinaryRepresentation(cut)) << "prefix of " << n << " bytes";
        ASSERT_TRUE(target == before) << "prefix of " << n << " bytes";
    }
    EXPECT_EQ(beforeXml, compactXml(target));
    // The whole representation is read; its entries come after the one held.
    QByteArray whole = rep;
    EXPECT_TRUE(target.SetBinaryRepresentation(whole));
    EXPECT_EQ(QString("Watch list"), target.GetName());
    const FrequencyStoreList &view = target;
    ASSERT_EQ(4, view.GetFrequencyStoreEntry().size());
    EXPECT_TRUE(view.GetFrequencyStoreEntry().at(0) == shortTimeEntry());
    EXPECT_TRUE(view.GetFrequencyStoreEntry().at(1) == ffmEntry());
}

TEST(StoreListBadInput, TruncatedBinaryFileFails)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray rep = fullList().GetBinaryRepresentationAsQByteArray();
    const QString path = dir.filePath("cut.bin");
    {
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(rep.left(rep.size() / 2));
    }
    QFile in(path);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly));
    FrequencyStoreList list;
    list.SetName("kept");
    EXPECT_FALSE(list.LoadBinary(&in));
    EXPECT_EQ(QString("kept"), list.GetName());
    EXPECT_EQ(0, list.GetFrequencyStoreEntry().size());
}

TEST(StoreListBadInput, ForeignIdIsRefused)
{
    QByteArray rep = fullList().GetBinaryRepresentationAsQByteArray();
    rep[0] = char(rep.at(0) ^ 0x01);
    FrequencyStoreList list;
    EXPECT_FALSE(list.SetBinaryRepresentation(rep));
    EXPECT_FALSE(list.AnyData());
}

TEST(StoreListBadInput, CorruptedBytesDoNotCrash)
{
    const QByteArray rep = fullList().GetBinaryRepresentationAsQByteArray();
    // Flip each byte in turn; whatever comes of it, reading must end.
    int accepted = 0;
    for (int i = 8; i < rep.size(); ++i) {
        QByteArray bad = rep;
        bad[i] = char(~bad.at(i));
        FrequencyStoreList list;
        list.SetValidate(i % 2 == 0);
        if (list.SetBinaryRepresentation(bad))
            ++accepted;
    }
    EXPECT_LT(accepted, rep.size() - 8);
}

TEST(StoreListBadInput, MalformedXmlLeavesListUnchanged)
{
    FrequencyStoreList list;
    list.SetName("kept");
    EXPECT_FALSE(list.SetXmlString("<FrequencyStoreList Version=\"1.2\"><Name>broken</Nam"));
    EXPECT_EQ(QString("kept"), list.GetName());
    EXPECT_FALSE(list.SetXmlString("<NotAList Version=\"1.2\"><Name>x</Name></NotAList>"));
    EXPECT_EQ(QString("kept"), list.GetName());
    EXPECT_FALSE(list.SetXmlString(QString()));
    EXPECT_EQ(QString("kept"), list.GetName());
}

TEST(StoreListBadInput, MissingXmlFile)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    FrequencyStoreList list;
    EXPECT_FALSE(list.LoadXml(dir.filePath("absent.xml")));
    EXPECT_FALSE(list.AnyData());
}

TEST(StoreListBadInput, IncompleteEntryInXmlRefusedWithValidation)
{
    // An entry without a branch cannot be appended while validation is on.
    const QString doc = listDocument(
        " Version=\"1.2\"", "<FrequencyStoreEntry Version=\"2.0\"><Type>t</Type></FrequencyStoreEntry>");
    FrequencyStoreList list;
    EXPECT_THROW_MESSAGE(list.SetXmlString(doc, true), IncompleteDefinitionException,
                         "FrequencyStoreList: Tried to append not completely defined or invalid item "
                         "FrequencyStoreEntry.");
    FrequencyStoreList lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetXmlString(doc, true));
    ASSERT_EQ(1, lax.GetFrequencyStoreEntry().size());
    EXPECT_EQ(QString("t"), lax.GetFrequencyStoreEntry().at(0).GetType());
}
