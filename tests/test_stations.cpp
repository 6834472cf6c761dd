// Tests of the stations of an entry: FrequencyStoreEntryLocation (element
// "Location"), Station, DFData and DFDataDetail (element "Detail"): names,
// ranges, Check, both written forms, copies and damaged input.

#include "recordtestsupport.h"
#include "tags.h"
#include "treesamples.h"
#include "treetestsupport.h"

#include <limits>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::BinaryParsingException;
using ORBELIN::Converters;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::InvalidXmlException;
using ORBELIN::OutOfRangeException;

namespace {

// A DFData without a plot, so that its text can be written out in full.
DFData smallDFData()
{
    DFData d;
    d.SetQuality(91.25);
    d.SetFrequency(samples::valueRecord<Frequency>(145525000.0));
    d.SetAzimuth(123.45);
    d.SetLevel(-70.5);
    return d;
}

// A station that differs from samples::station() in every member, to read
// into and to see that a failed read leaves it as it was.
Station otherStation()
{
    Station s;
    s.SetStationID(99);
    s.SetOWNStation(false);
    s.SetTimeStamp(samples::utc(2020, 1, 2, 3, 4, 5, 6));
    s.SetLongitude(-3.5);
    s.SetLatitude(40.25);
    s.SetName(QStringLiteral("Madrid"));
    s.SetPositionSource(QStringLiteral("manual"));
    s.SetDefaultName(QStringLiteral("default name"));
    return s;
}

} // namespace

// --- names and ids -----------------------------------------------------------------------

TEST(StationRecord, IdsAndElementNames)
{
    EXPECT_EQ(qint64(0x318382bf), Station::GetId());
    EXPECT_EQ(qint64(0xffffffffb34bff67ull), DFData::GetId());
    EXPECT_EQ(qint64(0xffffffffa499fd08ull), DFDataDetail::GetId());
    EXPECT_EQ(qint64(0xffffffff8061be0cull), FrequencyStoreEntryLocation::GetId());
    EXPECT_EQ(QString("Station"), Station().GetObjectName());
    EXPECT_EQ(QString("DFData"), DFData().GetObjectName());
    EXPECT_EQ(QString("Detail"), DFDataDetail().GetObjectName());
    EXPECT_EQ(QString("Location"), FrequencyStoreEntryLocation().GetObjectName());
}

TEST(StationRecord, OwnStationKeepsItsSpelling)
{
    Station s;
    s.SetOWNStation(true);
    EXPECT_TRUE(s.IsOWNStationSet());
    EXPECT_TRUE(s.GetOWNStation());
    EXPECT_EQ(QString("<Station><OWNStation>true</OWNStation></Station>"), compactXml(s));

    // Only the schema's spelling is read; other spellings are unknown
    // elements and skipped.
    Station read;
    ASSERT_TRUE(read.SetXmlString("<Station><OwnStation>true</OwnStation><OWNSTATION>true</OWNSTATION></Station>", true));
    EXPECT_FALSE(read.IsOWNStationSet());
    ASSERT_TRUE(read.SetXmlString("<Station><OWNStation>true</OWNStation></Station>", true));
    EXPECT_TRUE(read.IsOWNStationSet());
    EXPECT_TRUE(read.GetOWNStation());
}

// --- ranges ------------------------------------------------------------------------------

TEST(StationRange, BoundsAreAccepted)
{
    Station s;
    ASSERT_TRUE(s.GetValidate());
    EXPECT_NO_THROW(s.SetLongitude(180.0));
    EXPECT_NO_THROW(s.SetLatitude(-90.0));
    EXPECT_EQ(180.0, s.GetLongitude());
    EXPECT_EQ(-90.0, s.GetLatitude());
    EXPECT_NO_THROW(s.Check());
    EXPECT_EQ(QString("<Station><Longitude>180.000000</Longitude><Latitude>-90.000000</Latitude></Station>"),
              compactXml(s));
    EXPECT_NO_THROW(s.SetLongitude(-180.0));
    EXPECT_NO_THROW(s.SetLatitude(90.0));
    EXPECT_NO_THROW(s.Check());
    EXPECT_TRUE(s.IsValidLongitude(180.0) && s.IsValidLongitude(-180.0));
    EXPECT_TRUE(s.IsValidLatitude(90.0) && s.IsValidLatitude(-90.0));
    roundTrip(s);
}

TEST(StationRange, JustOutsideIsRefusedAndTheRecordKept)
{
    Station s;
    s.SetLongitude(16.0);
    s.SetLatitude(48.0);
    EXPECT_THROW_MESSAGE(s.SetLongitude(180.000001), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Station'.");
    EXPECT_THROW_MESSAGE(s.SetLongitude(-180.000001), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Station'.");
    EXPECT_THROW_MESSAGE(s.SetLatitude(-90.000001), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Station'.");
    EXPECT_THROW_MESSAGE(s.SetLatitude(90.000001), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Station'.");
    EXPECT_THROW(s.SetLongitude(std::numeric_limits<double>::quiet_NaN()), OutOfRangeException);
    EXPECT_EQ(16.0, s.GetLongitude());
    EXPECT_EQ(48.0, s.GetLatitude());
    EXPECT_FALSE(s.IsValidLongitude(180.000001));
    EXPECT_FALSE(s.IsValidLatitude(-90.000001));

    // A refused value leaves an unset member unset.
    Station fresh;
    EXPECT_THROW(fresh.SetLongitude(180.000001), OutOfRangeException);
    EXPECT_FALSE(fresh.IsLongitudeSet());
    EXPECT_FALSE(fresh.AnyData());
}

TEST(StationRange, OutOfRangeStoredWithoutValidationFailsCheck)
{
    Station s;
    s.SetValidate(false);
    s.SetLongitude(180.000001);
    EXPECT_TRUE(s.IsLongitudeSet());
    EXPECT_EQ(180.000001, s.GetLongitude());
    // Check does not ask the flag.
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Station: Please set Longitude properly.");
    s.SetValidate(true);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Station: Please set Longitude properly.");

    Station lat;
    lat.SetValidate(false);
    lat.SetLatitude(-95.0);
    lat.SetValidate(true);
    EXPECT_THROW_MESSAGE(lat.Check(), OutOfRangeException, "Station: Please set Latitude properly.");
}

// --- Check -------------------------------------------------------------------------------

TEST(StationCheck, NothingSetPasses)
{
    Station s;
    EXPECT_NO_THROW(s.Check());
    EXPECT_FALSE(s.AnyData());
}

TEST(StationCheck, NullStringsRefusedBySetter)
{
    Station s;
    s.SetName(QStringLiteral("kept"));
    EXPECT_THROW_MESSAGE(s.SetName(QString()), OutOfRangeException, "Station: Please set Name properly.");
    EXPECT_EQ(QString("kept"), s.GetName());
    EXPECT_THROW_MESSAGE(s.SetPositionSource(QString()), OutOfRangeException,
                         "Station: Please set PositionSource properly.");
    EXPECT_FALSE(s.IsPositionSourceSet());
    // An empty string is no null string.
    EXPECT_NO_THROW(s.SetPositionSource(QLatin1String("")));
    EXPECT_NO_THROW(s.Check());
}

TEST(StationCheck, NamesEachSpoiledMember)
{
    expectCheckNamesSpoiled<Station>(samples::station(), "Station", {
        {"Longitude", [](Station &s) { s.SetLongitude(-181.0); }},
        {"Latitude", [](Station &s) { s.SetLatitude(90.5); }},
        {"Name", [](Station &s) { s.SetName(QString()); }},
        {"PositionSource", [](Station &s) { s.SetPositionSource(QString()); }},
    });
}

TEST(StationCheck, TableOrder)
{
    Station s;
    s.SetValidate(false);
    s.SetPositionSource(QString());
    s.SetName(QString());
    s.SetLatitude(100.0);
    s.SetLongitude(200.0);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Station: Please set Longitude properly.");
    s.SetLongitude(0.0);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Station: Please set Latitude properly.");
    s.SetLatitude(0.0);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Station: Please set Name properly.");
    s.SetName(QStringLiteral("n"));
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Station: Please set PositionSource properly.");
    s.ResetPositionSource();
    EXPECT_NO_THROW(s.Check());
}

TEST(StationCheck, ChecksItsDFData)
{
    Station s = samples::station();
    s.SetValidate(false);
    s.GetDFData().GetDetail().SetAntenna(QString());
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Detail: Please set Antenna properly.");
    s.GetDFData().GetDetail().SetAntenna(QStringLiteral("a"));
    EXPECT_NO_THROW(s.Check());
    s.GetDFData().ResetLevel();
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "DFData: Please set Level properly.");
}

TEST(DFDataCheck, LevelBeforeQuality)
{
    DFData d;
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "DFData: Please set Level properly.");
    d.SetValidate(false);
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "DFData: Please set Level properly.");
    d.SetValidate(true);
    d.SetLevel(-80.0);
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "DFData: Please set Quality properly.");
    d.SetQuality(50.0);
    d.SetFrequency(samples::valueRecord<Frequency>(100.0));
    EXPECT_NO_THROW(d.Check());
    EXPECT_TRUE(d.HasData());
}

TEST(DFDataCheck, MandatoryMembersMakeHasData)
{
    DFData d = smallDFData();
    EXPECT_TRUE(d.HasData());
    d.ResetAzimuth();
    EXPECT_TRUE(d.HasData()) << "Azimuth is optional";
    DFData noQuality = smallDFData();
    noQuality.ResetQuality();
    EXPECT_FALSE(noQuality.HasData());
    EXPECT_TRUE(noQuality.AnyData());
    DFData noLevel = smallDFData();
    noLevel.ResetLevel();
    EXPECT_FALSE(noLevel.HasData());
    DFData noFrequency = smallDFData();
    noFrequency.ResetFrequency();
    EXPECT_FALSE(noFrequency.HasData());
    DFData onlyAzimuth;
    onlyAzimuth.SetAzimuth(1.0);
    EXPECT_FALSE(onlyAzimuth.HasData());
    EXPECT_TRUE(onlyAzimuth.AnyData());
}

TEST(DFDataCheck, NumbersHaveNoRange)
{
    DFData d = smallDFData();
    EXPECT_NO_THROW(d.SetQuality(-1e9));
    EXPECT_NO_THROW(d.SetAzimuth(720.0));
    EXPECT_NO_THROW(d.SetLevel(1e12));
    EXPECT_NO_THROW(d.Check());
    EXPECT_TRUE(d.IsValidQuality(-1e300));
    EXPECT_EQ(720.0, d.GetAzimuth());
}

TEST(DFDataCheck, NestedDetailChecked)
{
    DFData d = samples::dfData();
    EXPECT_NO_THROW(d.Check());
    d.SetValidate(false);
    d.GetDetail().SetAntenna(QString());
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set Antenna properly.");
}

TEST(DFDataDetailCheck, NullAntennaNamed)
{
    DFDataDetail d;
    EXPECT_THROW_MESSAGE(d.SetAntenna(QString()), OutOfRangeException, "Detail: Please set Antenna properly.");
    EXPECT_FALSE(d.IsAntennaSet());
    EXPECT_NO_THROW(d.Check());
    d.SetValidate(false);
    d.SetAntenna(QString());
    EXPECT_TRUE(d.IsAntennaSet());
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set Antenna properly.");
    d.SetValidate(true);
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set Antenna properly.");
    d.SetAntenna(QLatin1String(""));
    EXPECT_NO_THROW(d.Check());
}

TEST(DFDataDetailCheck, NumbersAcceptAnything)
{
    DFDataDetail d;
    d.SetElevation(-1000.0);
    d.SetElevationVar(1e9);
    d.SetCompass(-359.99);
    d.SetStdDeviation(std::numeric_limits<double>::infinity());
    EXPECT_NO_THROW(d.Check());
    EXPECT_TRUE(d.IsElevationSet() && d.IsElevationVarSet() && d.IsCompassSet() && d.IsStdDeviationSet());
}

// --- XML form ----------------------------------------------------------------------------

TEST(StationXml, ElementsInTableOrder)
{
    Station s;
    // Set in reverse order: the written order is the table's.
    s.SetPositionSource(QStringLiteral("GPS"));
    s.SetDFData(smallDFData());
    s.SetName(QStringLiteral("Kahlenberg"));
    s.SetLatitude(48.276111);
    s.SetLongitude(16.333333);
    const QDateTime time = samples::utc(2026, 11, 23, 8, 29, 59, 500);
    s.SetTimeStamp(time);
    s.SetOWNStation(true);
    s.SetStationID(17);
    EXPECT_EQ(QString("<Station><StationID>17</StationID><OWNStation>true</OWNStation><TimeStamp>")
                  + Converters::ToString(time)
                  + "</TimeStamp><Longitude>16.333333</Longitude><Latitude>48.276111</Latitude>"
                    "<Name>Kahlenberg</Name><DFData><Quality>91.25</Quality><Frequency>145525000.00</Frequency>"
                    "<Azimuth>123.45</Azimuth><Level>-70.50</Level></DFData><PositionSource>GPS</PositionSource>"
                    "</Station>",
              compactXml(s));
}

TEST(StationXml, OnlySetMembersWritten)
{
    Station s;
    s.SetName(QStringLiteral("only"));
    EXPECT_EQ(QString("<Station><Name>only</Name></Station>"), compactXml(s));
    Station id;
    id.SetStationID(-7);
    id.SetOWNStation(false);
    EXPECT_EQ(QString("<Station><StationID>-7</StationID><OWNStation>false</OWNStation></Station>"), compactXml(id));
}

TEST(StationXml, CoordinateTextForms)
{
    Station s;
    s.SetLongitude(0.000001);
    s.SetLatitude(-0.5);
    EXPECT_EQ(QString("<Station><Longitude>0.000001</Longitude><Latitude>-0.500000</Latitude></Station>"), compactXml(s));
    s.SetLongitude(-180.0);
    s.SetLatitude(5.0);
    EXPECT_EQ(QString("<Station><Longitude>-180.000000</Longitude><Latitude>5.000000</Latitude></Station>"),
              compactXml(s));
}

TEST(StationXml, TimeStampThroughConverters)
{
    const QDateTime time = samples::utc(2031, 2, 28, 23, 59, 58, 7);
    Station s;
    s.SetTimeStamp(time);
    EXPECT_EQ(QString("<Station><TimeStamp>%1</TimeStamp></Station>").arg(Converters::ToString(time)), compactXml(s));
    Station read;
    ASSERT_TRUE(read.SetXmlString(
        QString("<Station><TimeStamp>%1</TimeStamp></Station>").arg(Converters::ToString(time)), true));
    EXPECT_TRUE(read.IsTimeStampSet());
    EXPECT_EQ(Converters::ToDateTime(Converters::ToString(time)), read.GetTimeStamp());
    EXPECT_EQ(time, read.GetTimeStamp());
}

TEST(StationXml, EmptyOwnStationElementThrows)
{
    for (const char *document : {"<Station><OWNStation></OWNStation></Station>", "<Station><OWNStation/></Station>"}) {
        Station s = otherStation();
        EXPECT_THROW_MESSAGE(s.SetXmlString(document, true), InvalidXmlException,
                             "Please set a value or a default for the boolean 'OWNStation' in 'Station'.");
        // The failed read leaves the record as it was.
        EXPECT_TRUE(s == otherStation());
        EXPECT_FALSE(s.GetOWNStation());

        Station quiet = otherStation();
        EXPECT_FALSE(quiet.SetXmlString(document));
        EXPECT_TRUE(quiet == otherStation());
    }
    // Also without validation and with a default.
    Station lax;
    lax.SetValidate(false);
    lax.SetDefaultOWNStation(true);
    EXPECT_THROW_MESSAGE(lax.SetXmlString("<Station><OWNStation/></Station>", true), InvalidXmlException,
                         "Please set a value or a default for the boolean 'OWNStation' in 'Station'.");
    EXPECT_FALSE(lax.IsOWNStationSet());
}

TEST(StationXml, OwnStationTexts)
{
    struct Case
    {
        const char *text;
        bool value;
    };
    for (const Case &c : {Case{"true", true}, Case{"TRUE", true}, Case{"1", true}, Case{"yes", true},
                          Case{"false", false}, Case{"False", false}, Case{"0", false}}) {
        Station s;
        ASSERT_TRUE(s.SetXmlString(QString("<Station><OWNStation>%1</OWNStation></Station>").arg(c.text), true))
            << c.text;
        EXPECT_TRUE(s.IsOWNStationSet()) << c.text;
        EXPECT_EQ(c.value, s.GetOWNStation()) << c.text;
    }
}

TEST(StationXml, DFDataIsOneChild)
{
    Station s;
    ASSERT_TRUE(s.SetXmlString("<Station><DFData><Level>-1.00</Level></DFData>"
                               "<DFData><Quality>2.00</Quality></DFData></Station>",
                               true));
    EXPECT_TRUE(s.IsDFDataSet());
    // The second element is merged into the one member.
    const Station &view = s;
    EXPECT_EQ(-1.0, view.GetDFData().GetLevel());
    EXPECT_EQ(2.0, view.GetDFData().GetQuality());
    EXPECT_EQ(1, compactXml(samples::station()).count("<DFData>"));
}

TEST(DFDataXml, ElementsInTableOrder)
{
    DFData d;
    d.SetPlot_Info(samples::plotInfo());
    d.SetDetail(samples::dfDataDetail());
    d.SetLevel(-70.5);
    d.SetAzimuth(123.45);
    d.SetFrequency(samples::frequency());
    d.SetQuality(91.25);
    EXPECT_EQ(QString("<DFData><Quality>91.25</Quality>") + compactXml(samples::frequency())
                  + "<Azimuth>123.45</Azimuth><Level>-70.50</Level>" + compactXml(samples::dfDataDetail())
                  + compactXml(samples::plotInfo()) + "</DFData>",
              compactXml(d));
    EXPECT_EQ((QStringList{"Quality", "Frequency", "Azimuth", "Level", "Detail", "Plot_Info"}), childNames(compactXml(d)));
}

TEST(DFDataXml, TwoDecimals)
{
    DFData d;
    d.SetQuality(0.5);
    d.SetFrequency(samples::valueRecord<Frequency>(1.0));
    d.SetLevel(-3.0);
    EXPECT_EQ(QString("<DFData><Quality>0.50</Quality><Frequency>1.00</Frequency><Level>-3.00</Level></DFData>"),
              compactXml(d));
}

TEST(DFDataXml, MandatoryWrittenUnsetWithoutValidation)
{
    DFData d;
    d.SetValidate(false);
    EXPECT_EQ(QString("<DFData><Quality>0.00</Quality><Frequency>0.00</Frequency><Level>0.00</Level></DFData>"),
              compactXml(d));
}

TEST(DFDataDetailXml, ElementsAndOnlyWhenSet)
{
    EXPECT_EQ(QString("<Detail><Antenna>ADD-197</Antenna><Elevation>12.50</Elevation><ElevationVar>0.75</ElevationVar>"
                      "<Compass>359.99</Compass><StdDeviation>1.25</StdDeviation></Detail>"),
              compactXml(samples::dfDataDetail()));
    DFDataDetail compass;
    compass.SetCompass(42.0);
    EXPECT_EQ(QString("<Detail><Compass>42.00</Compass></Detail>"), compactXml(compass));
    DFDataDetail antenna;
    antenna.SetAntenna(QLatin1String(""));
    EXPECT_EQ(QString("<Detail><Antenna></Antenna></Detail>"), compactXml(antenna));
}

// --- binary form -------------------------------------------------------------------------

TEST(StationBinary, TagsLengthsAndValues)
{
    const Station s = samples::station();
    const QByteArray rep = s.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(be32(0x318382bfu), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ((QVector<quint32>{TagStationID, TagOWNStation, TagTimeStamp, TagLongitude, TagLatitude,
                                TagName, TagDFData, TagPositionSource}),
              tagsOf(body));
    // The station id travels as a raw 32-bit integer: length 4.
    EXPECT_EQ(be32(17), valueOf(body, TagStationID));
    // A bool is one byte.
    EXPECT_EQ(QByteArray(1, '\x01'), valueOf(body, TagOWNStation));
    EXPECT_EQ(utf8Value(Converters::ToString(samples::utc(2026, 11, 23, 8, 29, 59, 500))), valueOf(body, TagTimeStamp));
    EXPECT_EQ(utf8Value("16.333333"), valueOf(body, TagLongitude));
    EXPECT_EQ(utf8Value("48.276111"), valueOf(body, TagLatitude));
    EXPECT_EQ(utf8Value("Kahlenberg"), valueOf(body, TagName));
    EXPECT_EQ(bodyOf(samples::dfData().GetBinaryRepresentationAsQByteArray()), valueOf(body, TagDFData));
    EXPECT_EQ(utf8Value("GPS"), valueOf(body, TagPositionSource));
}

TEST(StationBinary, NegativeIdAndFalse)
{
    Station s;
    s.SetStationID(-7);
    s.SetOWNStation(false);
    const QByteArray body = bodyOf(s.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(frame(TagStationID, be32(0xfffffff9u)) + frame(TagOWNStation, QByteArray(1, '\0')), body);
}

TEST(StationBinary, ReadsHandBuiltBody)
{
    const QDateTime time = samples::utc(2026, 1, 2, 3, 4, 5, 678);
    QByteArray rep = representation(Station::GetId(),
                                    frame(TagStationID, be32(0x7fffffffu)) + frame(TagOWNStation, boolValue(true))
                                        + frame(TagTimeStamp, utf8Value(Converters::ToString(time)))
                                        + frame(TagLatitude, utf8Value("-90.000000"))
                                        + frame(TagPositionSource, utf8Value(QString::fromUtf8("Gr\xc3\xb6\xc3\x9f" "e"))));
    Station s;
    ASSERT_TRUE(s.SetBinaryRepresentation(rep));
    EXPECT_EQ(0x7fffffff, s.GetStationID());
    EXPECT_TRUE(s.GetOWNStation());
    EXPECT_EQ(time, s.GetTimeStamp());
    EXPECT_EQ(-90.0, s.GetLatitude());
    EXPECT_FALSE(s.IsLongitudeSet());
    EXPECT_FALSE(s.IsNameSet());
    EXPECT_FALSE(s.IsDFDataSet());
    EXPECT_EQ(QString::fromUtf8("Gr\xc3\xb6\xc3\x9f" "e"), s.GetPositionSource());
}

TEST(DFDataBinary, TagsAndValues)
{
    const DFData d = samples::dfData();
    const QByteArray rep = d.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(be32(0xb34bff67u), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ((QVector<quint32>{TagQuality, TagFrequency, TagAzimuth, TagLevel, TagDFDataDetail, TagPlotInfo}),
              tagsOf(body));
    EXPECT_EQ(utf8Value("91.25"), valueOf(body, TagQuality));
    EXPECT_EQ(utf8Value("123.45"), valueOf(body, TagAzimuth));
    EXPECT_EQ(utf8Value("-70.50"), valueOf(body, TagLevel));
    EXPECT_EQ(bodyOf(samples::frequency().GetBinaryRepresentationAsQByteArray()), valueOf(body, TagFrequency));
    EXPECT_EQ(bodyOf(samples::dfDataDetail().GetBinaryRepresentationAsQByteArray()), valueOf(body, TagDFDataDetail));
    EXPECT_EQ(bodyOf(samples::plotInfo().GetBinaryRepresentationAsQByteArray()), valueOf(body, TagPlotInfo));

    DFData small = smallDFData();
    small.ResetAzimuth();
    EXPECT_EQ((QVector<quint32>{TagQuality, TagFrequency, TagLevel}),
              tagsOf(bodyOf(small.GetBinaryRepresentationAsQByteArray())));
}

TEST(DFDataDetailBinary, TagsAndValues)
{
    const QByteArray rep = samples::dfDataDetail().GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(be32(0xa499fd08u), rep.left(4));
    EXPECT_EQ(frame(TagAntenna, utf8Value("ADD-197")) + frame(TagElevation, utf8Value("12.50"))
                  + frame(TagElevationVar, utf8Value("0.75")) + frame(TagCompass, utf8Value("359.99"))
                  + frame(TagStdDeviation, utf8Value("1.25")),
              bodyOf(rep));
    DFDataDetail one;
    one.SetStdDeviation(0.126);
    EXPECT_EQ(frame(TagStdDeviation, utf8Value("0.13")), bodyOf(one.GetBinaryRepresentationAsQByteArray()));
}

// --- round trips, copies and equality ----------------------------------------------------

TEST(StationRoundTrip, FullSample)
{
    const Station s = samples::station();
    const RoundTrip<Station> trip = roundTrip(s);
    for (const Station *back : {&trip.fromXml, &trip.fromBinary}) {
        EXPECT_EQ(17, back->GetStationID());
        EXPECT_TRUE(back->GetOWNStation());
        EXPECT_EQ(samples::utc(2026, 11, 23, 8, 29, 59, 500), back->GetTimeStamp());
        EXPECT_EQ(16.333333, back->GetLongitude());
        EXPECT_EQ(48.276111, back->GetLatitude());
        EXPECT_EQ(QString("Kahlenberg"), back->GetName());
        EXPECT_EQ(QString("GPS"), back->GetPositionSource());
        EXPECT_TRUE(back->GetDFData() == samples::dfData());
        EXPECT_EQ(-7, back->GetDFData().GetPlot_Info().GetKVF_CL_ID());
    }
}

TEST(StationRoundTrip, SparseAndFalse)
{
    Station s;
    s.SetOWNStation(false);
    s.SetStationID(-2147483647 - 1);
    s.SetName(QLatin1String(""));
    const RoundTrip<Station> trip = roundTrip(s);
    EXPECT_TRUE(trip.fromBinary.IsOWNStationSet());
    EXPECT_FALSE(trip.fromBinary.GetOWNStation());
    EXPECT_EQ(-2147483647 - 1, trip.fromBinary.GetStationID());
    EXPECT_FALSE(trip.fromXml.GetName().isNull());
    EXPECT_FALSE(trip.fromXml.IsTimeStampSet());
}

TEST(DFDataRoundTrip, WithAndWithoutOptionalChildren)
{
    roundTrip(samples::dfData());
    roundTrip(smallDFData());
    roundTrip(samples::dfDataDetail());
    DFDataDetail antennaOnly;
    antennaOnly.SetAntenna(QString::fromUtf8("Peilantenne \xc3\xa4"));
    roundTrip(antennaOnly);
}

TEST(StationCopy, EqualityReachesDeepIntoTheTree)
{
    const Station a = samples::station();
    Station b = a;
    EXPECT_TRUE(a == b);
    b.GetDFData().GetPlot_Info().GetEmissions().GetEmission()[0].SetLevel(-1.0);
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a != b);
    Station c = a;
    c.GetDFData().GetDetail().SetCompass(1.0);
    EXPECT_FALSE(a == c);
    Station d = a;
    d.GetDFData().SetFrequency(samples::valueRecord<Frequency>(1.0));
    EXPECT_FALSE(a == d);
    // The source is untouched by all of it.
    EXPECT_TRUE(a == samples::station());
    EXPECT_EQ(359.99, a.GetDFData().GetDetail().GetCompass());
}

TEST(StationCopy, CopiesAreIndependent)
{
    Station a = samples::station();
    Station assigned;
    assigned = a;
    EXPECT_TRUE(assigned == a);
    assigned.SetName(QStringLiteral("changed"));
    assigned.GetDFData().SetQuality(1.0);
    EXPECT_EQ(QString("Kahlenberg"), a.GetName());
    EXPECT_EQ(91.25, a.GetDFData().GetQuality());
    a.SetLongitude(0.0);
    EXPECT_EQ(16.333333, assigned.GetLongitude());

    const Station source = samples::station();
    Station copy(source);
    copy.ResetDFData();
    EXPECT_TRUE(source.IsDFDataSet());
    EXPECT_FALSE(copy == source);
}

TEST(StationCopy, UnsetMembersDoNotCount)
{
    Station a;
    a.SetName(QStringLiteral("x"));
    Station b = a;
    b.SetDefaultLongitude(3.0);
    b.SetLongitude(3.0);
    b.ResetLongitude();
    EXPECT_TRUE(a == b);
    b.SetOWNStation(false);
    EXPECT_FALSE(a == b);
}

// --- FrequencyStoreEntryLocation -----------------------------------------------------------

TEST(EntryLocationForms, XmlGroupsStationsBeforeResults)
{
    FrequencyStoreEntryLocation l;
    l.AppendLocationResult(samples::locationResult());
    l.AppendStation(samples::station(1, QStringLiteral("Kahlenberg")));
    l.AppendStation(samples::station(2, QStringLiteral("Leopoldsberg")));
    EXPECT_EQ(QString("<Location>") + compactXml(samples::station(1, QStringLiteral("Kahlenberg")))
                  + compactXml(samples::station(2, QStringLiteral("Leopoldsberg")))
                  + compactXml(samples::locationResult()) + "</Location>",
              compactXml(l));
    EXPECT_EQ((QStringList{"Station", "Station", "LocationResult"}), childNames(compactXml(l)));
    // No element or bit of its own around the two lists.
    EXPECT_FALSE(compactXml(l).contains("<Stations"));
}

TEST(EntryLocationForms, BinaryHasBothRepeatedMembers)
{
    const FrequencyStoreEntryLocation l = samples::entryLocation();
    const QByteArray rep = l.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(be32(0x8061be0cu), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ((QVector<quint32>{TagStation, TagLocationResult}), tagsOf(body));
    const FrequencyStoreEntryLocation &view = l;
    EXPECT_EQ(itemsValue(view.GetStation()), valueOf(body, TagStation));
    EXPECT_EQ(itemsValue(view.GetLocationResult()), valueOf(body, TagLocationResult));
    EXPECT_EQ(be32(2), valueOf(body, TagStation).left(4));
}

TEST(EntryLocationForms, EmptyLocationWritesAnEmptyElement)
{
    FrequencyStoreEntryLocation l;
    const FrequencyStoreEntryLocation &view = l;
    EXPECT_TRUE(view.GetStation().isEmpty());
    EXPECT_NO_THROW(l.Check());
    EXPECT_EQ(QString("<Location/>"), compactXml(l));
    // Each repeated member has its frame, with count 0.
    EXPECT_EQ(frame(TagStation, be32(0)) + frame(TagLocationResult, be32(0)),
              bodyOf(l.GetBinaryRepresentationAsQByteArray()));
    FrequencyStoreEntryLocation lax;
    lax.SetValidate(false);
    EXPECT_EQ(QString("<Location/>"), compactXml(lax));
    roundTrip(l);
}

TEST(EntryLocationForms, FreshLocationWritesAnEmptyElement)
{
    // Check makes the block before the writer asks HasData, and a record
    // without mandatory members is then complete.
    FrequencyStoreEntryLocation l;
    EXPECT_EQ(QString("<Location/>"), compactXml(l));
    FrequencyStoreEntryLocation b;
    EXPECT_EQ(representation(FrequencyStoreEntryLocation::GetId(),
                             frame(TagStation, be32(0)) + frame(TagLocationResult, be32(0))),
              b.GetBinaryRepresentationAsQByteArray());
}

TEST(EntryLocationForms, ReadingInterleavedElements)
{
    const QString doc = QString("<Location>") + compactXml(samples::station(5, QStringLiteral("a")))
        + compactXml(samples::locationResult()) + compactXml(samples::station(6, QStringLiteral("b"))) + "</Location>";
    FrequencyStoreEntryLocation l;
    ASSERT_TRUE(l.SetXmlString(doc, true));
    const FrequencyStoreEntryLocation &view = l;
    ASSERT_EQ(2, view.GetStation().size());
    EXPECT_EQ(5, view.GetStation().at(0).GetStationID());
    EXPECT_EQ(6, view.GetStation().at(1).GetStationID());
    ASSERT_EQ(1, view.GetLocationResult().size());
    EXPECT_TRUE(view.GetLocationResult().at(0) == samples::locationResult());
    EXPECT_EQ((QStringList{"Station", "Station", "LocationResult"}), childNames(compactXml(l)));
}

TEST(EntryLocationRoundTrip, FullSample)
{
    const RoundTrip<FrequencyStoreEntryLocation> trip = roundTrip(samples::entryLocation());
    const FrequencyStoreEntryLocation &view = trip.fromBinary;
    ASSERT_EQ(2, view.GetStation().size());
    EXPECT_EQ(QString("Leopoldsberg"), view.GetStation().at(1).GetName());
    ASSERT_EQ(1, view.GetLocationResult().size());
    EXPECT_EQ(2, view.GetLocationResult().at(0).GetStation().size());
    EXPECT_TRUE(trip.fromXml.IsStationSet());
    EXPECT_TRUE(trip.fromXml.IsLocationResultSet());
}

TEST(EntryLocationCheck, ChecksEveryEntry)
{
    FrequencyStoreEntryLocation l = samples::entryLocation();
    EXPECT_NO_THROW(l.Check());
    l.SetValidate(false);
    l.GetStation()[1].SetName(QString());
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "Station: Please set Name properly.");
    l.GetStation()[1].SetName(QStringLiteral("fixed"));
    EXPECT_NO_THROW(l.Check());
    l.GetLocationResult()[0].GetStation()[1].SetLatitude(90.5);
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "Station: Please set Latitude properly.");
    l.GetLocationResult()[0].GetStation()[1].SetLatitude(90.0);
    EXPECT_NO_THROW(l.Check());
    l.GetStation()[0].GetDFData().ResetQuality();
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "DFData: Please set Quality properly.");
}

TEST(EntryLocationAppend, IncompleteItemsRefusedWithValidation)
{
    FrequencyStoreEntryLocation l;
    ASSERT_TRUE(l.GetValidate());
    // A station that was never touched has no data.
    const Station untouched;
    ASSERT_FALSE(untouched.HasData());
    EXPECT_THROW_MESSAGE(l.AppendStation(untouched), IncompleteDefinitionException,
                         "Location: Tried to append not completely defined or invalid item Station.");
    LocationResult partial;
    partial.SetDFBandwidth(1.0);
    ASSERT_FALSE(partial.HasData());
    EXPECT_THROW_MESSAGE(l.AppendLocationResult(partial), IncompleteDefinitionException,
                         "Location: Tried to append not completely defined or invalid item LocationResult.");
    const FrequencyStoreEntryLocation &view = l;
    EXPECT_TRUE(view.GetStation().isEmpty());
    EXPECT_TRUE(view.GetLocationResult().isEmpty());
    EXPECT_FALSE(l.IsStationSet());
    EXPECT_FALSE(l.IsLocationResultSet());

    l.AppendStation(samples::station());
    l.AppendLocationResult(samples::locationResult());
    EXPECT_EQ(1, view.GetStation().size());
    EXPECT_EQ(1, view.GetLocationResult().size());
    EXPECT_TRUE(l.IsStationSet());
    EXPECT_TRUE(l.IsLocationResultSet());
}

TEST(EntryLocationAppend, IncompleteItemsGrowTheVectorWithoutValidation)
{
    FrequencyStoreEntryLocation l;
    l.SetValidate(false);
    l.AppendStation(Station());
    l.AppendStation(Station());
    LocationResult partial;
    partial.SetDFBandwidth(1.0);
    l.AppendLocationResult(partial);
    const FrequencyStoreEntryLocation &view = l;
    EXPECT_EQ(2, view.GetStation().size());
    EXPECT_EQ(1, view.GetLocationResult().size());
    EXPECT_TRUE(l.IsStationSet());
    EXPECT_TRUE(l.IsLocationResultSet());
}

TEST(EntryLocationCopy, DeepDifferenceAndIndependence)
{
    const FrequencyStoreEntryLocation a = samples::entryLocation();
    FrequencyStoreEntryLocation b = a;
    EXPECT_TRUE(a == b);
    b.GetLocationResult()[0].GetStation()[0].GetDFData().GetDetail().SetElevation(0.0);
    EXPECT_FALSE(a == b);
    FrequencyStoreEntryLocation c;
    c = a;
    c.GetStation()[1].SetOWNStation(false);
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(a == samples::entryLocation());
    const FrequencyStoreEntryLocation &view = a;
    EXPECT_TRUE(view.GetStation().at(1).GetOWNStation());

    // The order of the items counts.
    FrequencyStoreEntryLocation swapped;
    swapped.AppendStation(samples::station(2, QStringLiteral("Leopoldsberg")));
    swapped.AppendStation(samples::station(1, QStringLiteral("Kahlenberg")));
    swapped.AppendLocationResult(samples::locationResult());
    EXPECT_FALSE(a == swapped);
}

// --- damaged input -----------------------------------------------------------------------

TEST(StationBadInput, DamagedBinaryKeepsTheRecord)
{
    expectBadBinaryKeepsRecord(samples::station(), otherStation());
}

TEST(DFDataBadInput, DamagedBinaryKeepsTheRecord)
{
    expectBadBinaryKeepsRecord(samples::dfData(), smallDFData());
    expectBadBinaryKeepsRecord(samples::dfDataDetail(), DFDataDetail());
}

TEST(EntryLocationBadInput, DamagedBinaryKeepsTheRecord)
{
    FrequencyStoreEntryLocation start;
    start.AppendStation(otherStation());
    expectBadBinaryKeepsRecord(samples::entryLocation(), start);
}

TEST(StationBadInput, LengthErrorKeepsWhatWasRead)
{
    Station sample;
    sample.SetName(QStringLiteral("first"));
    sample.SetPositionSource(QStringLiteral("second"));
    const QByteArray body = bodyOf(sample.GetBinaryRepresentationAsQByteArray());
    // One byte too short: both members are read, and the count comes out
    // below 0.
    {
        testsupport::BinaryReader reader(body);
        Station s;
        EXPECT_THROW_MESSAGE(s.SetBinary(reader.stream, body.size() - 1), BinaryParsingException,
                             "Station" + lengthErrorTail);
        EXPECT_EQ(QString("first"), s.GetName());
    }
    // One byte too long with the stream ending: the loop ends above 0.
    {
        testsupport::BinaryReader reader(body);
        Station s;
        EXPECT_THROW_MESSAGE(s.SetBinary(reader.stream, body.size() + 1), BinaryParsingException,
                             "Station" + lengthErrorTail);
        EXPECT_EQ(QString("first"), s.GetName());
        EXPECT_EQ(QString("second"), s.GetPositionSource());
    }
    // A negative length reads nothing and fails; 0 reads nothing and passes.
    {
        testsupport::BinaryReader reader(body);
        Station s;
        EXPECT_THROW_MESSAGE(s.SetBinary(reader.stream, -1), BinaryParsingException, "Station" + lengthErrorTail);
        EXPECT_FALSE(s.IsNameSet());
    }
    {
        testsupport::BinaryReader reader(body);
        Station s;
        EXPECT_NO_THROW(s.SetBinary(reader.stream, 0));
        EXPECT_FALSE(s.AnyData());
    }
}

TEST(StationBadInput, UnknownTagSkipped)
{
    QByteArray rep = representation(Station::GetId(),
                                    frame(TagName, utf8Value("a")) + frame(0x12345678u, QByteArray("xyz\0\1", 5))
                                        + frame(TagPositionSource, utf8Value("p")));
    Station s;
    ASSERT_TRUE(s.SetBinaryRepresentation(rep));
    EXPECT_EQ(QString("a"), s.GetName());
    EXPECT_EQ(QString("p"), s.GetPositionSource());
    Station expected;
    expected.SetName(QStringLiteral("a"));
    expected.SetPositionSource(QStringLiteral("p"));
    EXPECT_TRUE(expected == s);
}

TEST(StationBadInput, UnknownElementSkipped)
{
    Station s;
    ASSERT_TRUE(s.SetXmlString("<Station><Name>a</Name><Antenna><Name>b</Name></Antenna>"
                               "<PositionSource>p</PositionSource></Station>",
                               true));
    EXPECT_EQ(QString("a"), s.GetName());
    EXPECT_EQ(QString("p"), s.GetPositionSource());
    DFData d;
    ASSERT_TRUE(d.SetXmlString("<DFData><Bearing>12</Bearing><Level>1.00</Level></DFData>", true));
    EXPECT_EQ(1.0, d.GetLevel());
    FrequencyStoreEntryLocation l;
    ASSERT_TRUE(l.SetXmlString("<Location><Emitter/>" + compactXml(samples::station()) + "</Location>", true));
    const FrequencyStoreEntryLocation &view = l;
    ASSERT_EQ(1, view.GetStation().size());
    EXPECT_TRUE(view.GetStation().at(0) == samples::station());
}

TEST(StationBadInput, NumbersThatAreNone)
{
    Station s;
    ASSERT_TRUE(s.SetXmlString("<Station><StationID>seven</StationID><Longitude>east</Longitude>"
                               "<Latitude></Latitude></Station>",
                               true));
    EXPECT_TRUE(s.IsStationIDSet());
    EXPECT_EQ(0, s.GetStationID());
    EXPECT_TRUE(s.IsLongitudeSet());
    EXPECT_EQ(0.0, s.GetLongitude());
    EXPECT_TRUE(s.IsLatitudeSet());
    EXPECT_EQ(0.0, s.GetLatitude());

    QByteArray rep = representation(Station::GetId(), frame(TagLongitude, utf8Value("far")));
    Station b;
    ASSERT_TRUE(b.SetBinaryRepresentation(rep));
    EXPECT_TRUE(b.IsLongitudeSet());
    EXPECT_EQ(0.0, b.GetLongitude());

    DFData d;
    ASSERT_TRUE(d.SetXmlString("<DFData><Quality>n/a</Quality><Level>-1e2</Level></DFData>", true));
    EXPECT_EQ(0.0, d.GetQuality());
    EXPECT_EQ(-100.0, d.GetLevel());

    Station t;
    ASSERT_TRUE(t.SetXmlString("<Station><TimeStamp>yesterday</TimeStamp></Station>", true));
    EXPECT_TRUE(t.IsTimeStampSet());
    EXPECT_FALSE(t.GetTimeStamp().isValid());
}

TEST(StationBadInput, OutOfRangeTextKeepsTheRecord)
{
    const QString doc = "<Station><Name>new</Name><Latitude>95.000000</Latitude></Station>";
    Station strict = otherStation();
    EXPECT_THROW_MESSAGE(strict.SetXmlString(doc, true), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Station'.");
    EXPECT_TRUE(strict == otherStation());
    Station quiet = otherStation();
    EXPECT_FALSE(quiet.SetXmlString(doc));
    EXPECT_TRUE(quiet == otherStation());

    Station lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetXmlString(doc, true));
    EXPECT_EQ(95.0, lax.GetLatitude());

    QByteArray rep = representation(Station::GetId(), frame(TagName, utf8Value("new"))
                                                          + frame(TagLongitude, utf8Value("-181.000000")));
    Station binary = otherStation();
    EXPECT_FALSE(binary.SetBinaryRepresentation(rep));
    EXPECT_TRUE(binary == otherStation());
}

TEST(StationBadInput, BrokenXmlKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::station(), otherStation());
    for (const char *doc : {"<Station><Name>a</Nam></Station>", "<Station><Name>a</Name>", "<Station><Name>a<</Name></Station>",
                            "", "<Stations><Name>a</Name></Stations>", "<Name>a</Name>"}) {
        Station s = otherStation();
        EXPECT_FALSE(s.SetXmlString(doc, true)) << doc;
        EXPECT_TRUE(s == otherStation()) << doc;
    }
}

TEST(DFDataBadInput, BrokenXmlKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::dfData(), smallDFData());
    expectBrokenXmlKeepsRecord(samples::dfDataDetail(), DFDataDetail());
}

TEST(EntryLocationBadInput, BrokenXmlKeepsTheRecord)
{
    FrequencyStoreEntryLocation start;
    start.AppendStation(otherStation());
    expectBrokenXmlKeepsRecord(samples::entryLocation(), start);
}
