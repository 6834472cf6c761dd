// Tests of a store entry with its whole tree: the members beyond the settings
// branch (profile, demodulator, location, stations, detection, result list,
// direction-finding and shape-detector settings), their place in both written
// forms, round trips, copies and equality through every level, reset, the
// order of Check, and bad input at every level of the tree.

#include "golden.h"
#include "recordtestsupport.h"
#include "tags.h"
#include "treesamples.h"
#include "treetestsupport.h"

#include <functional>
#include <utility>
#include <vector>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;

namespace {

// The tags of the further members, in the order they are written.
const QVector<quint32> kFurtherTags = {TagProfileData, TagDemodulator, TagEntryLocation, TagStation,
                                       TagDetection,   TagResultList,  TagEntryDFSettings, TagShapeDetector};
const QStringList kFurtherElements = {"Profile_Data", "Demodulator_Settings", "Location", "Station",
                                      "Detection",    "ResultList",           "DF_Settings", "ShapeDetectorSettings"};

FFM_Settings ffm()
{
    FFM_Settings s;
    s.SetFrequency(samples::valueRecord<Frequency>(8646000.0));
    s.SetIFBandwidth(samples::valueRecord<IFBandwidth>(3000.0));
    return s;
}

// A complete branch and a Type: the least an entry with data holds.
FrequencyStoreEntry baseEntry()
{
    FrequencyStoreEntry e;
    e.SetFFM_Settings(ffm());
    e.SetType(QStringLiteral("Located emitter"));
    return e;
}

Demodulator_Settings fskDemodulator()
{
    FSK_SettingsDetail detail;
    detail.SetVariant(FSK_SettingsDetail::Variant_Matched_Filter);
    detail.SetBaudCapRange(5.0);
    detail.SetBaudTrackRange(1.0);
    detail.SetFrqOffTrack(20.0);
    detail.SetSideband(FSK_SettingsDetail::Sideband_Upper_USB);
    FSK_Settings fsk;
    fsk.SetModType(FSK_Settings::ModType_FSK2);
    fsk.SetBaudrate(samples::valueRecord<Baudrate>(100.0));
    fsk.AppendShift(samples::valueRecord<Shift>(170.0));
    fsk.SetDetail(detail);
    Demodulator_Settings d;
    d.SetMode(Demodulator_Settings::Mode_FSK);
    d.SetFrequencyOffset(85.0);
    d.SetFSK_Settings(fsk);
    return d;
}

DF_Settings dfSettings()
{
    DF_SettingsDetail detail;
    detail.SetQualityThreshold(60);
    detail.SetLevelThreshold(-95.0);
    DF_Settings s;
    s.SetBandwidth(samples::valueRecord<Bandwidth>(3000.0));
    s.SetDFMode(DF_Settings::DFMode_Cont);
    s.SetAveraging(1.0);
    s.SetMethod(DF_Settings::Method_WATSONWATT);
    s.SetDetail(detail);
    return s;
}

ShapeDetectorSettings shapes()
{
    ShapeDetectorSettings s;
    s.AppendGenericShape(QStringLiteral("Continuous carrier"));
    s.AppendShape(QStringLiteral("FSK 170 Hz"));
    return s;
}

// A complete short-time branch and a Type.
FrequencyStoreEntry shortTimeEntry()
{
    ShortTime_Settings st;
    st.SetHopsPerSecond(100.0);
    FrequencyStoreEntry e;
    e.SetShortTime_Settings(st);
    e.SetType(QStringLiteral("Hopper"));
    return e;
}

// An entry with every member set, down to the leaves of the tree, on the
// branch of `e`.
FrequencyStoreEntry fullEntry(FrequencyStoreEntry e = baseEntry())
{
    e.SetUsage(FrequencyStoreEntry::Usage_Resultlist);
    e.SetID(QStringLiteral("FT-0103"));
    e.SetAntenna(QStringLiteral("DF array"));
    e.SetComment(QString::fromUtf8("Unknown FSK data, located twice \xe2\x80\x93 S\xc3\xbc\x64"));
    e.SetProfile_Data(samples::profileData());
    e.SetDemodulator_Settings(fskDemodulator());
    e.SetLocation(samples::entryLocation());
    e.AppendStation(samples::station(1));
    e.AppendStation(samples::station(9, QStringLiteral("Mobile 9")));
    e.SetDetection(samples::detection());
    e.SetResultList(samples::resultList());
    e.SetDF_Settings(dfSettings());
    e.SetShapeDetectorSettings(shapes());
    e.SetAdditionalInfo(QStringLiteral("Checked twice"));
    return e;
}

// Ways to change an entry deep in its tree, each reached through the
// non-const getters from the entry down.
const std::vector<std::pair<const char *, std::function<void(FrequencyStoreEntry &)>>> &deepChanges()
{
    static const std::vector<std::pair<const char *, std::function<void(FrequencyStoreEntry &)>>> changes = {
        {"point radius", [](FrequencyStoreEntry &e) { e.GetProfile_Data().GetPointOfInterest()[0].SetRadius(2500.5); }},
        {"point ellipse rotation",
         [](FrequencyStoreEntry &e) { e.GetProfile_Data().GetPointOfInterest()[1].GetEllipse().SetRotation(1.0); }},
        {"point location",
         [](FrequencyStoreEntry &e) { e.GetProfile_Data().GetPointOfInterest()[1].GetLocation().SetLatitude(-90.0); }},
        {"profile object name", [](FrequencyStoreEntry &e) { e.GetProfile_Data().SetLocalObjectName("Pier 4"); }},
        {"demodulator baud rate",
         [](FrequencyStoreEntry &e) { e.GetDemodulator_Settings().GetFSK_Settings().GetBaudrate().SetValue(50.0); }},
        {"demodulator detail",
         [](FrequencyStoreEntry &e) { e.GetDemodulator_Settings().GetFSK_Settings().GetDetail().SetFrqOffTrack(21.0); }},
        {"location station name", [](FrequencyStoreEntry &e) { e.GetLocation().GetStation()[1].SetName("Other"); }},
        {"bearing level", [](FrequencyStoreEntry &e) { e.GetLocation().GetStation()[0].GetDFData().SetLevel(-1.0); }},
        {"bearing detail compass",
         [](FrequencyStoreEntry &e) { e.GetLocation().GetStation()[0].GetDFData().GetDetail().SetCompass(0.0); }},
        {"plot info identifier",
         [](FrequencyStoreEntry &e) { e.GetLocation().GetStation()[0].GetDFData().GetPlot_Info().SetKVF_CL_ID(8); }},
        {"emission level",
         [](FrequencyStoreEntry &e) {
             e.GetLocation().GetStation()[0].GetDFData().GetPlot_Info().GetEmissions().GetEmission()[0].SetLevel(0.0);
         }},
        {"burst level",
         [](FrequencyStoreEntry &e) {
             e.GetLocation().GetStation()[0].GetDFData().GetPlot_Info().GetEmissions().GetEmission()[0]
                 .GetBursts().GetBurst()[1].SetLevel(-61.74);
         }},
        {"burst frequency",
         [](FrequencyStoreEntry &e) {
             e.GetLocation().GetStation()[1].GetDFData().GetPlot_Info().GetEmissions().GetEmission()[0]
                 .GetBursts().GetBurst()[0].GetFrequency().SetMin(1.0);
         }},
        {"result bandwidth", [](FrequencyStoreEntry &e) { e.GetLocation().GetLocationResult()[0].SetDFBandwidth(1.0); }},
        {"result position",
         [](FrequencyStoreEntry &e) { e.GetLocation().GetLocationResult()[0].GetLocation().SetLongitude(16.42); }},
        {"result detail frequency",
         [](FrequencyStoreEntry &e) {
             e.GetLocation().GetLocationResult()[0].GetDetail().GetFrequency().SetUse(true);
         }},
        {"plot type",
         [](FrequencyStoreEntry &e) { e.GetLocation().GetLocationResult()[0].GetPlot().SetType(Plot::Type_Chirp); }},
        {"plot frequency list",
         [](FrequencyStoreEntry &e) {
             e.GetLocation().GetLocationResult()[0].GetPlot().GetFrequencyList().GetValue()[1].SetTimeStamp(
                 samples::utc(2026, 1, 1, 0, 0, 0, 0));
         }},
        {"plot detail",
         [](FrequencyStoreEntry &e) {
             e.GetLocation().GetLocationResult()[0].GetPlot().GetDetail().SetAnalogDemod(PlotDetail::AnalogDemod_AM);
         }},
        {"result station",
         [](FrequencyStoreEntry &e) { e.GetLocation().GetLocationResult()[0].GetStation()[1].SetStationID(5); }},
        {"entry station", [](FrequencyStoreEntry &e) { e.GetStation()[1].SetOWNStation(false); }},
        {"entry station bearing",
         [](FrequencyStoreEntry &e) { e.GetStation()[0].GetDFData().GetDetail().SetAntenna(QLatin1String("")); }},
        {"detection", [](FrequencyStoreEntry &e) { e.GetDetection().ResetStopTime(); }},
        {"result list", [](FrequencyStoreEntry &e) { e.GetResultList().SetConfidence(94); }},
        {"direction finding detail", [](FrequencyStoreEntry &e) { e.GetDF_Settings().GetDetail().SetElevationMin(1); }},
        {"shape", [](FrequencyStoreEntry &e) { e.GetShapeDetectorSettings().AppendShape("Burst"); }},
    };
    return changes;
}

bool sameEntry(const FrequencyStoreEntry &a, const FrequencyStoreEntry &b)
{
    return a == b && compactXml(a) == compactXml(b);
}

} // namespace

// --- where the further members stand -----------------------------------------------------

TEST(EntryTree, EntryWithOnlyABranchAndTypeWritesNoneOfTheFurtherMembers)
{
    const FrequencyStoreEntry e = baseEntry();
    ASSERT_TRUE(e.HasData());
    EXPECT_EQ(childNames(compactXml(e)), (QStringList{"Type", "FFM_Settings"}));
    EXPECT_EQ(tagsOf(nestedBody(e)), (QVector<quint32>{VersionTag, TagType, TagFFM}));
    for (quint32 tag : kFurtherTags)
        EXPECT_FALSE(hasTag(nestedBody(e), tag)) << std::hex << tag;
}

TEST(EntryTree, FurtherMembersStandBetweenTheBranchAndAdditionalInfoInBothForms)
{
    const FrequencyStoreEntry e = fullEntry();
    QStringList elements = {"Usage", "ID", "Type", "Antenna", "Comment", "FFM_Settings"};
    elements << kFurtherElements;
    elements.insert(elements.indexOf("Station") + 1, "Station"); // two stations
    elements << "AdditionalInfo";
    EXPECT_EQ(childNames(compactXml(e)), elements);

    QVector<quint32> tags = {VersionTag, TagUsage, TagID, TagType, TagAntenna, TagComment, TagFFM};
    tags << kFurtherTags << TagAdditionalInfo;
    EXPECT_EQ(tagsOf(nestedBody(e)), tags);
}

TEST(EntryTree, ShortTimeBranchTakesTheSamePlace)
{
    const FrequencyStoreEntry e = fullEntry(shortTimeEntry());
    const QVector<quint32> tags = tagsOf(nestedBody(e));
    EXPECT_EQ(tags.indexOf(TagShortTime) + 1, tags.indexOf(TagProfileData));
    EXPECT_FALSE(tags.contains(TagFFM));
    roundTrip(e);
}

TEST(EntryTree, EachFurtherMemberHasItsPresenceBitAndIsReadBackFromXml)
{
    const FrequencyStoreEntry full = fullEntry();
    FrequencyStoreEntry e;
    ASSERT_TRUE(e.SetXmlString(full.GetXmlString(), true));
    EXPECT_TRUE(e.IsProfile_DataSet());
    EXPECT_TRUE(e.IsDemodulator_SettingsSet());
    EXPECT_TRUE(e.IsLocationSet());
    EXPECT_TRUE(e.IsStationSet());
    EXPECT_TRUE(e.IsDetectionSet());
    EXPECT_TRUE(e.IsResultListSet());
    EXPECT_TRUE(e.IsDF_SettingsSet());
    EXPECT_TRUE(e.IsShapeDetectorSettingsSet());
    EXPECT_EQ(e.GetStation().size(), 2);
    EXPECT_EQ(e.GetStation()[1].GetName(), QStringLiteral("Mobile 9"));

    // Each member read alone sets its own bit and no other.
    const std::vector<std::function<bool(const FrequencyStoreEntry &)>> isSet = {
        &FrequencyStoreEntry::IsProfile_DataSet, &FrequencyStoreEntry::IsDemodulator_SettingsSet,
        &FrequencyStoreEntry::IsLocationSet,     &FrequencyStoreEntry::IsStationSet,
        &FrequencyStoreEntry::IsDetectionSet,    &FrequencyStoreEntry::IsResultListSet,
        &FrequencyStoreEntry::IsDF_SettingsSet,  &FrequencyStoreEntry::IsShapeDetectorSettingsSet};
    const QString xml = compactXml(full);
    for (int i = 0; i < kFurtherElements.size(); ++i) {
        const QString name = kFurtherElements.at(i);
        const int from = xml.indexOf(QStringLiteral("<%1").arg(name));
        const int to = xml.indexOf(QStringLiteral("</%1>").arg(name), from) + name.size() + 3;
        const QString document = QStringLiteral("<FrequencyStoreEntry Version=\"2.0\">%1</FrequencyStoreEntry>")
                                     .arg(xml.mid(from, to - from));
        FrequencyStoreEntry one;
        ASSERT_TRUE(one.SetXmlString(document, true)) << name.toStdString();
        for (int k = 0; k < int(isSet.size()); ++k)
            EXPECT_EQ(isSet[k](one), k == i) << name.toStdString() << " bit of " << kFurtherElements.at(k).toStdString();
    }
}

TEST(EntryTree, StationsTravelUnderOneTagWithACountAndItemsByLengthOnly)
{
    const FrequencyStoreEntry e = fullEntry();
    const QByteArray value = valueOf(nestedBody(e), TagStation);
    QByteArray expected = be32(2);
    for (const Station &s : e.GetStation()) {
        const QByteArray body = bodyOf(s.GetBinaryRepresentationAsQByteArray());
        expected += be32(quint32(body.size())) + body;
    }
    EXPECT_EQ(value, expected);
}

TEST(EntryTree, EmptyLocationWritesAnEmptyElementAndTwoEmptyVectors)
{
    FrequencyStoreEntry e = baseEntry();
    e.SetLocation(FrequencyStoreEntryLocation());
    EXPECT_TRUE(compactXml(e).contains(QStringLiteral("<Location/>")));
    EXPECT_EQ(valueOf(nestedBody(e), TagEntryLocation),
              frame(TagStation, be32(0)) + frame(TagLocationResult, be32(0)));
    const RoundTrip<FrequencyStoreEntry> trip = roundTrip(e);
    EXPECT_TRUE(trip.fromXml.IsLocationSet());
    EXPECT_TRUE(trip.fromBinary.IsLocationSet());
}

TEST(EntryTree, AnyDataLooksAtTheFurtherMembers)
{
    FrequencyStoreEntry e;
    EXPECT_FALSE(e.AnyData());
    Detection stopOnly;
    stopOnly.SetStopTime(samples::utc(2026, 11, 23, 0, 0, 0, 0));
    e.SetDetection(stopOnly);
    EXPECT_TRUE(e.AnyData());
    EXPECT_FALSE(e.HasData());

    FrequencyStoreEntry stations;
    stations.AppendStation(samples::station());
    EXPECT_TRUE(stations.AnyData());
    EXPECT_FALSE(stations.HasData());
}

TEST(EntryTree, HasDataAsksOnlyTheBranchAndType)
{
    FrequencyStoreEntry e = baseEntry();
    e.SetValidate(false);
    e.SetProfile_Data(Profile_Data());
    e.SetDetection(Detection());
    e.AppendStation(Station());
    EXPECT_TRUE(e.HasData());
}

// --- AppendStation and ResetStation ---------------------------------------------------

TEST(EntryTree, AppendStationRefusesAnIncompleteStationWithItsOwnMessage)
{
    FrequencyStoreEntry e = baseEntry();
    EXPECT_THROW_MESSAGE(e.AppendStation(Station()), IncompleteDefinitionException,
                         "FrequencyStoreEntry: Tried to append not completely defined or invalid item Station.");
    EXPECT_TRUE(std::as_const(e).GetStation().isEmpty());
    EXPECT_FALSE(e.IsStationSet());

    e.SetValidate(false);
    e.AppendStation(Station());
    EXPECT_EQ(e.GetStation().size(), 1);
    EXPECT_TRUE(e.IsStationSet());
}

TEST(EntryTree, ResetStationLeavesTheStationsInsideLocationAlone)
{
    FrequencyStoreEntry e = baseEntry();
    const Station shared = samples::station(1);
    FrequencyStoreEntryLocation location;
    location.AppendStation(shared);
    e.SetLocation(location);
    e.AppendStation(shared);
    ASSERT_TRUE(e.IsStationSet());

    e.ResetStation();
    const FrequencyStoreEntry &look = e; // the const getters set no bit
    EXPECT_TRUE(look.GetStation().isEmpty());
    EXPECT_FALSE(look.IsStationSet());
    EXPECT_TRUE(look.IsLocationSet());
    EXPECT_TRUE(look.GetLocation().IsStationSet());
    ASSERT_EQ(look.GetLocation().GetStation().size(), 1);
    EXPECT_EQ(look.GetLocation().GetStation()[0], shared);

    // The entry writes no station list of its own, the location still does.
    const QByteArray body = nestedBody(e);
    EXPECT_FALSE(hasTag(body, TagStation));
    EXPECT_TRUE(hasTag(valueOf(body, TagEntryLocation), TagStation));
    EXPECT_EQ(childNames(compactXml(e)), (QStringList{"Type", "FFM_Settings", "Location"}));
}

// --- round trips, copies and equality --------------------------------------------------

TEST(EntryTree, FullTreeRoundTripsInBothForms)
{
    const FrequencyStoreEntry e = fullEntry();
    ASSERT_TRUE(e.HasData());
    e.Check();
    const RoundTrip<FrequencyStoreEntry> trip = roundTrip(e);
    EXPECT_EQ(trip.fromXml.GetLocation().GetLocationResult()[0].GetPlot().GetFrequencyList().GetValue().size(), 2);
    EXPECT_EQ(trip.fromBinary.GetLocation()
                  .GetStation()[0]
                  .GetDFData()
                  .GetPlot_Info()
                  .GetEmissions()
                  .GetEmission()[0]
                  .GetBursts()
                  .GetBurst()[1]
                  .GetAzimuth(),
              -12.5);
}

TEST(EntryTree, FullTreesRoundTripInAListToo)
{
    FrequencyStoreList list;
    list.SetName(QStringLiteral("whole trees"));
    list.AppendFrequencyStoreEntry(fullEntry());
    list.AppendFrequencyStoreEntry(baseEntry());
    list.AppendFrequencyStoreEntry(fullEntry(shortTimeEntry()));
    const RoundTrip<FrequencyStoreList> trip = roundTrip(list);
    EXPECT_EQ(trip.fromBinary.GetFrequencyStoreEntry().size(), 3);
}

TEST(EntryTree, CopiesCompareEqualAndAChangeAtAnyLevelMakesThemDiffer)
{
    const FrequencyStoreEntry original = fullEntry();
    for (const auto &change : deepChanges()) {
        FrequencyStoreEntry copy = original;
        ASSERT_TRUE(copy == original) << change.first;
        change.second(copy);
        EXPECT_FALSE(copy == original) << change.first;
        EXPECT_FALSE(original == copy) << change.first;
        EXPECT_NE(compactXml(copy), compactXml(original)) << change.first;
        // The copy owns its tree: the original is as it was made.
        EXPECT_TRUE(sameEntry(original, fullEntry())) << change.first;
    }
}

TEST(EntryTree, AssignedEntriesShareUntilOneIsChangedDeepDown)
{
    FrequencyStoreEntry a = fullEntry();
    FrequencyStoreEntry b;
    b = a;
    EXPECT_TRUE(a == b);
    for (const auto &change : deepChanges()) {
        FrequencyStoreEntry c;
        c = a;
        change.second(a);
        EXPECT_FALSE(a == c) << change.first;
        EXPECT_TRUE(sameEntry(c, b)) << change.first;
        a = b;
    }
}

TEST(EntryTree, ChangedCopiesStillRoundTrip)
{
    for (const auto &change : deepChanges()) {
        FrequencyStoreEntry e = fullEntry();
        change.second(e);
        SCOPED_TRACE(change.first);
        roundTrip(e);
    }
}

// --- ResetToDefault and Check -------------------------------------------------------------

TEST(EntryTree, ResetToDefaultResetsEveryNestedMemberInTurn)
{
    FrequencyStoreEntry e = fullEntry();
    Profile_Data profile;
    profile.SetDefaultPriority(QStringLiteral("low"));
    e.SetDefaultProfile_Data(profile);
    DF_Settings df;
    df.SetDefaultDFMode(DF_Settings::DFMode_Gate);
    e.SetDefaultDF_Settings(df);
    ResultList result;
    result.SetDefaultConfidence(50);
    e.SetDefaultResultList(result);

    const FrequencyStoreEntry &look = e; // the const getters set no bit
    e.ResetToDefault();
    EXPECT_FALSE(e.IsProfile_DataSet());
    EXPECT_FALSE(e.IsDemodulator_SettingsSet());
    EXPECT_FALSE(e.IsLocationSet());
    EXPECT_FALSE(e.IsStationSet());
    EXPECT_FALSE(e.IsDetectionSet());
    EXPECT_FALSE(e.IsResultListSet());
    EXPECT_FALSE(e.IsDF_SettingsSet());
    EXPECT_FALSE(e.IsShapeDetectorSettingsSet());
    EXPECT_TRUE(look.GetStation().isEmpty());
    EXPECT_TRUE(look.GetLocation().GetStation().isEmpty());
    EXPECT_FALSE(look.GetDemodulator_Settings().IsModeSet());
    EXPECT_FALSE(look.GetDemodulator_Settings().IsFSK_SettingsSet());
    // Built-in defaults deep down are set again, through every level.
    EXPECT_TRUE(look.GetDemodulator_Settings().GetFSK_Settings().GetBaudrate().IsUseSet());
    EXPECT_FALSE(look.GetLocation().AnyData());
    // The nested members came back from their defaults, each reset to its
    // own defaults in turn.
    EXPECT_TRUE(look.GetProfile_Data().IsPrioritySet());
    EXPECT_EQ(look.GetProfile_Data().GetPriority(), QStringLiteral("low"));
    EXPECT_TRUE(look.GetDF_Settings().IsDFModeSet());
    EXPECT_EQ(look.GetDF_Settings().GetDFMode(), DF_Settings::DFMode_Gate);
    EXPECT_EQ(look.GetResultList().GetConfidence(), 50);
    EXPECT_TRUE(look.AnyData());
    EXPECT_FALSE(look.HasData());
    EXPECT_EQ(look.GetVersion(), QStringLiteral("2.0"));
    // None of them is written: their bits stayed clear. (No branch and no
    // Type: only validation off writes the entry, with its Type unset.)
    FrequencyStoreEntry unchecked = look;
    unchecked.SetValidate(false);
    EXPECT_EQ(childNames(compactXml(unchecked)), QStringList{"Type"});
}

TEST(EntryTree, CheckGoesBranchScalarsNestedMembersInTableOrderThenAdditionalInfo)
{
    FrequencyStoreEntry e = fullEntry();
    e.SetValidate(false);
    e.GetFFM_Settings().ResetFrequency();
    e.SetComment(QString());
    e.GetProfile_Data().ResetSignalClass();
    e.GetDemodulator_Settings().ResetFrequencyOffset();
    e.GetLocation().GetStation()[0].SetName(QString());
    e.GetStation()[1].SetPositionSource(QString());
    e.GetDetection().ResetStartTime();
    e.GetResultList().ResetConfidence();
    e.GetDF_Settings().ResetAveraging();
    e.GetShapeDetectorSettings().ResetShape();
    e.SetAdditionalInfo(QString());
    e.SetValidate(true);

    // Each failure in turn, mended before the next Check.
    const std::vector<std::pair<QString, std::function<void(FrequencyStoreEntry &)>>> steps = {
        {"FrequencyStoreEntry:Check failed. The mandatory member m_fFM_Settings is not set or mandatory data of "
         "the member is not set.",
         [](FrequencyStoreEntry &x) { x.GetFFM_Settings().SetFrequency(samples::valueRecord<Frequency>(1.0)); }},
        {"FrequencyStoreEntry: Please set Comment properly.",
         [](FrequencyStoreEntry &x) { x.SetComment(QStringLiteral("c")); }},
        {"Profile_Data: Please set SignalClass properly.",
         [](FrequencyStoreEntry &x) { x.GetProfile_Data().SetSignalClass(QStringLiteral("Data")); }},
        {"Demodulator_Settings: Please set FrequencyOffset properly.",
         [](FrequencyStoreEntry &x) { x.GetDemodulator_Settings().SetFrequencyOffset(0.0); }},
        {"Station: Please set Name properly.",
         [](FrequencyStoreEntry &x) { x.GetLocation().GetStation()[0].SetName(QStringLiteral("n")); }},
        {"Station: Please set PositionSource properly.",
         [](FrequencyStoreEntry &x) { x.GetStation()[1].SetPositionSource(QStringLiteral("GPS")); }},
        {"Detection: Please set StartTime properly.",
         [](FrequencyStoreEntry &x) { x.GetDetection().SetStartTime(samples::utc(2026, 1, 1, 0, 0, 0, 0)); }},
        {"ResultList: Please set Confidence properly.",
         [](FrequencyStoreEntry &x) { x.GetResultList().SetConfidence(1); }},
        {"DF_Settings: Please set Averaging properly.",
         [](FrequencyStoreEntry &x) { x.GetDF_Settings().SetAveraging(1.0); }},
        {"ShapeDetectorSettings: Please set Shape properly.",
         [](FrequencyStoreEntry &x) { x.GetShapeDetectorSettings().AppendShape(QStringLiteral("s")); }},
        {"FrequencyStoreEntry: Please set AdditionalInfo properly.",
         [](FrequencyStoreEntry &x) { x.SetAdditionalInfo(QStringLiteral("a")); }},
    };
    for (const auto &step : steps) {
        try {
            e.Check();
            ADD_FAILURE() << "no failure, expected " << step.first.toStdString();
        } catch (const ORBELIN::ReportException &ex) {
            EXPECT_EQ(ex.GetMessage(), step.first);
        }
        step.second(e);
    }
    EXPECT_NO_THROW(e.Check());
}

TEST(EntryTree, CheckSkipsFurtherMembersThatAreNotSet)
{
    // Incomplete members in the current slots, their bits clear: the reset
    // value of a nested member is its default.
    FrequencyStoreEntry e = baseEntry();
    e.SetValidate(false);
    Detection stopOnly;
    stopOnly.SetStopTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    e.SetDefaultDetection(stopOnly);
    e.ResetDetection();
    ResultList nullReason;
    nullReason.SetValidate(false);
    nullReason.SetReason(QString());
    e.SetDefaultResultList(nullReason);
    e.ResetResultList();
    e.SetValidate(true);
    const FrequencyStoreEntry &look = e;
    ASSERT_TRUE(look.GetDetection().IsStopTimeSet());
    ASSERT_FALSE(look.IsDetectionSet());
    EXPECT_NO_THROW(e.Check());
    EXPECT_EQ(childNames(compactXml(e)), (QStringList{"Type", "FFM_Settings"}));

    // Once set, the same members fail the Check.
    e.SetDetection(stopOnly);
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Detection: Please set StartTime properly.");
}

TEST(EntryTree, WritingAnEntryWithAnIncompleteLocationResultFails)
{
    FrequencyStoreEntry e = baseEntry();
    FrequencyStoreEntryLocation location = samples::entryLocation();
    location.GetLocationResult()[0].SetValidate(false);
    location.GetLocationResult()[0].ResetDetail();
    e.SetLocation(location);
    EXPECT_THROW_MESSAGE(e.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Detail are not set properly in 'LocationResult'.");
    e.SetValidate(false);
    EXPECT_FALSE(e.GetXmlString().isEmpty());
}

// --- golden files -------------------------------------------------------------------------

TEST(EntryTreeGolden, FullEntryTreeWritesAndReadsItsGoldenFiles)
{
    expectGolden(fullEntry(), QStringLiteral("entrytree_full"));
}

// --- bad input at every level -------------------------------------------------------------

namespace {

// An entry the reads below start from: different from the full entry, with
// a further member of its own.
FrequencyStoreEntry startingEntry()
{
    FrequencyStoreEntry e = baseEntry();
    e.SetID(QStringLiteral("kept"));
    e.SetDetection(samples::detection());
    e.AppendStation(samples::station(42, QStringLiteral("Kept")));
    return e;
}

// A replacement in the full entry's XML that makes one level of the tree
// refuse it with validation on.
struct XmlSpoil
{
    const char *level;
    QString from;
    QString to;
};

} // namespace

TEST(EntryTreeBadInput, RefusedValuesAtEveryLevelOfTheXmlKeepTheEntry)
{
    const QString xml = fullEntry().GetXmlString();
    const std::vector<XmlSpoil> spoils = {
        {"point location", "<Longitude>-180.000000</Longitude>", "<Longitude>-180.5</Longitude>"},
        {"demodulator mode", "<Mode>FSK</Mode>", "<Mode>FSK9</Mode>"},
        {"demodulator variant", "<Variant>Matched Filter</Variant>", "<Variant>matched filter</Variant>"},
        {"station position", "<Latitude>48.276111</Latitude>", "<Latitude>90.000001</Latitude>"},
        {"own station flag", "<OWNStation>true</OWNStation>", "<OWNStation></OWNStation>"},
        {"result position", "<Latitude>-90.000000</Latitude>", "<Latitude>-90.5</Latitude>"},
        {"plot type", "<Type>Hopper</Type>", "<Type>Spiral</Type>"},
        {"plot detail", "<AnalogDemod>F3E</AnalogDemod>", "<AnalogDemod>F3X</AnalogDemod>"},
        {"direction finding", "<DFMode>Cont</DFMode>", "<DFMode>Continuous</DFMode>"},
        {"direction finding, unknown element", "<Averaging>", "<Oddity/><Averaging>"},
        {"entry usage", "<Usage>Resultlist</Usage>", "<Usage>Results</Usage>"},
        {"broken nesting", "</Burst>", "</Bursts>"},
        {"unclosed emission", "</Emission>", ""},
    };
    for (const XmlSpoil &spoil : spoils) {
        ASSERT_TRUE(xml.contains(spoil.from)) << spoil.level;
        QString bad = xml;
        bad.replace(bad.indexOf(spoil.from), spoil.from.size(), spoil.to);
        FrequencyStoreEntry e = startingEntry();
        const FrequencyStoreEntry before = e;
        EXPECT_FALSE(e.SetXmlString(bad)) << spoil.level;
        EXPECT_TRUE(sameEntry(e, before)) << spoil.level;
        EXPECT_EQ(e.GetStation()[0].GetName(), QStringLiteral("Kept")) << spoil.level;
    }
}

TEST(EntryTreeBadInput, ValidationOffReadsTheValuesTheEntryWouldRefuse)
{
    QString xml = fullEntry().GetXmlString();
    xml.replace(QStringLiteral("<Type>Hopper</Type>"), QStringLiteral("<Type>Spiral</Type>"));
    xml.replace(QStringLiteral("<Latitude>48.276111</Latitude>"), QStringLiteral("<Latitude>95.000000</Latitude>"));
    FrequencyStoreEntry e;
    e.SetValidate(false);
    ASSERT_TRUE(e.SetXmlString(xml));
    EXPECT_EQ(int(e.GetLocation().GetLocationResult()[0].GetPlot().GetType()), -1);
    EXPECT_TRUE(e.GetLocation().GetLocationResult()[0].GetPlot().IsTypeSet());
    EXPECT_EQ(e.GetLocation().GetStation()[0].GetLatitude(), 95.0);
}

TEST(EntryTreeBadInput, EveryXmlTruncationFailsAndKeepsTheEntry)
{
    const QString xml = compactXml(fullEntry());
    int tried = 0;
    for (int cut = 0; cut < xml.size(); cut += 7) {
        FrequencyStoreEntry e = startingEntry();
        const FrequencyStoreEntry before = e;
        EXPECT_FALSE(e.SetXmlString(xml.left(cut))) << cut;
        ASSERT_TRUE(sameEntry(e, before)) << cut;
        ++tried;
    }
    EXPECT_GT(tried, 100);
}

TEST(EntryTreeBadInput, EveryBinaryTruncationFailsAndKeepsTheEntry)
{
    const QByteArray full = fullEntry().GetBinaryRepresentationAsQByteArray();
    for (int cut = 0; cut < full.size(); cut += 3) {
        FrequencyStoreEntry e = startingEntry();
        const FrequencyStoreEntry before = e;
        QByteArray part = full.left(cut);
        EXPECT_FALSE(e.SetBinaryRepresentation(part)) << cut;
        ASSERT_TRUE(sameEntry(e, before)) << cut;
    }
}

// The frame length of every nested record of the tree, found by its tag, one
// byte too long and one too short: a length error at that level.
TEST(EntryTreeBadInput, ALengthErrorAtEveryLevelOfTheBinaryFailsAndKeepsTheEntry)
{
    const QByteArray full = fullEntry().GetBinaryRepresentationAsQByteArray();
    const QVector<quint32> tags = {TagFFM,          TagProfileData,    TagPointOfInterest, TagPointLocation,
                                   TagEllipse,      TagDemodulator,    TagEntryLocation,   TagStation,
                                   TagDFData,       TagDFDataDetail,   TagPlotInfo,        TagEmissions,
                                   TagEmission,     TagBursts,         TagBurst,           TagLocationResult,
                                   TagResultLocation, TagResultDetail, TagPlot,            TagPlotDetail,
                                   TagFrequencyList, TagFrequencyListValue, TagDetection,  TagResultList,
                                   TagEntryDFSettings, TagDFDetail,    TagShapeDetector};
    for (quint32 tag : tags) {
        int found = 0;
        for (int at = full.indexOf(be32(tag)); at >= 0; at = full.indexOf(be32(tag), at + 1)) {
            ++found;
            const quint32 length = readBe32(full, at + 4);
            for (qint64 delta : {1, -1}) {
                QByteArray bad = full;
                bad.replace(at + 4, 4, be32(quint32(length + delta)));
                FrequencyStoreEntry e = startingEntry();
                const FrequencyStoreEntry before = e;
                EXPECT_FALSE(e.SetBinaryRepresentation(bad)) << std::hex << tag << " at " << std::dec << at;
                ASSERT_TRUE(sameEntry(e, before)) << std::hex << tag;
            }
        }
        EXPECT_GT(found, 0) << std::hex << tag;
    }
}
