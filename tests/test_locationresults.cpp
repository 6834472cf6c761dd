// Tests of location results: LocationResult with its position, detail, plot
// and stations, and the two small records of a store entry, Detection and
// ResultList.

#include "recordtestsupport.h"
#include "tags.h"
#include "treesamples.h"
#include "treetestsupport.h"

#include <cmath>
#include <limits>
#include <utility>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::BinaryParsingException;
using ORBELIN::Converters;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;

namespace {

LocationResultLocation location(double longitude, double latitude)
{
    LocationResultLocation l;
    l.SetLongitude(longitude);
    l.SetLatitude(latitude);
    return l;
}

// The mandatory members alone.
LocationResult minimalResult()
{
    LocationResult r;
    r.SetTimeStamp(samples::utc(2026, 3, 4, 5, 6, 7, 8));
    r.SetDFBandwidth(1000.0);
    r.SetDetail(samples::locationResultDetail());
    return r;
}

} // namespace

// --- LocationResult -------------------------------------------------------------------------

TEST(LocationResult, IdsAndElementNames)
{
    EXPECT_EQ(LocationResult::GetId(), qint64(0x168c332d));
    EXPECT_EQ(LocationResultLocation::GetId(), qint64(0x45b7a8f0));
    EXPECT_EQ(LocationResultDetail::GetId(), qint64(0xffffffffc9b95df4ull));
    EXPECT_EQ(Detection::GetId(), qint64(0x646bf1bc));
    EXPECT_EQ(ResultList::GetId(), qint64(0x246f1b00));
    EXPECT_EQ(LocationResult().GetObjectName(), QStringLiteral("LocationResult"));
    EXPECT_EQ(LocationResultLocation().GetObjectName(), QStringLiteral("Location"));
    EXPECT_EQ(LocationResultDetail().GetObjectName(), QStringLiteral("Detail"));
    EXPECT_EQ(Detection().GetObjectName(), QStringLiteral("Detection"));
    EXPECT_EQ(ResultList().GetObjectName(), QStringLiteral("ResultList"));
}

TEST(LocationResult, WritesItsMembersInTableOrder)
{
    const LocationResult r = samples::locationResult();
    EXPECT_EQ(compactXml(r),
              QStringLiteral("<LocationResult><TimeStamp>2026-11-23T08:31:05,250Z</TimeStamp>"
                             "<DFBandwidth>25000.00</DFBandwidth>"
                             "<Location><Longitude>16.410000</Longitude><Latitude>-90.000000</Latitude></Location>"
                             "<Detail>")
                  + compactXml(samples::frequency()) + QStringLiteral("</Detail>") + compactXml(samples::plot())
                  + compactXml(samples::station(3, QStringLiteral("Bisamberg")))
                  + compactXml(samples::station(4, QStringLiteral("Laaer Berg"))) + QStringLiteral("</LocationResult>"));
    const QByteArray body = bodyOf(r.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body),
              (QVector<quint32>{TagTimeStamp, TagDFBandwidth, TagResultLocation, TagResultDetail, TagPlot, TagStation}));
    EXPECT_EQ(valueOf(body, TagTimeStamp),
              utf8Value(Converters::ToString(samples::utc(2026, 11, 23, 8, 31, 5, 250))));
    EXPECT_EQ(valueOf(body, TagDFBandwidth), utf8Value(QStringLiteral("25000.00")));
    EXPECT_EQ(valueOf(body, TagResultLocation), nestedBody(location(16.41, -90.0)));
    EXPECT_EQ(valueOf(body, TagResultDetail), nestedBody(samples::locationResultDetail()));
    EXPECT_EQ(valueOf(body, TagPlot), nestedBody(samples::plot()));
    EXPECT_EQ(valueOf(body, TagStation), itemsValue(r.GetStation()));
    EXPECT_EQ(readBe32(valueOf(body, TagStation), 0), 2u);
}

TEST(LocationResult, RoundTripsInBothForms)
{
    const RoundTrip<LocationResult> trip = roundTrip(samples::locationResult());
    EXPECT_EQ(std::as_const(trip.fromBinary).GetStation().size(), 2);
    EXPECT_EQ(std::as_const(trip.fromXml).GetStation().at(1).GetName(), QStringLiteral("Laaer Berg"));
    EXPECT_EQ(trip.fromXml.GetPlot().GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_EQ(trip.fromBinary.GetLocation().GetLatitude(), -90.0);
    roundTrip(minimalResult());
    LocationResult withRadiusPlot = samples::locationResult();
    Plot radiusPlot = samples::plotWithRadius();
    radiusPlot.ResetEllipse();
    withRadiusPlot.SetPlot(radiusPlot);
    EXPECT_EQ(roundTrip(withRadiusPlot).fromBinary.GetPlot().GetRadius(), 750.25);
}

TEST(LocationResult, WithoutPositionWritesNoLocationElement)
{
    LocationResult r = samples::locationResult();
    r.ResetLocation();
    EXPECT_TRUE(r.HasData());
    const QString xml = compactXml(r);
    EXPECT_FALSE(xml.contains(QStringLiteral("<Location>")));
    EXPECT_FALSE(xml.contains(QStringLiteral("<Location/>")));
    EXPECT_TRUE(xml.contains(QStringLiteral("<DFBandwidth>25000.00</DFBandwidth><Detail>")));
    const QByteArray body = bodyOf(r.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagTimeStamp, TagDFBandwidth, TagResultDetail, TagPlot, TagStation}));
    const RoundTrip<LocationResult> trip = roundTrip(r);
    EXPECT_FALSE(trip.fromXml.IsLocationSet());
    EXPECT_FALSE(trip.fromBinary.IsLocationSet());

    // The smallest result: no position, plot or station.
    const LocationResult minimal = minimalResult();
    EXPECT_EQ(compactXml(minimal), QStringLiteral("<LocationResult><TimeStamp>2026-03-04T05:06:07,008Z</TimeStamp>"
                                                  "<DFBandwidth>1000.00</DFBandwidth><Detail>")
                                       + compactXml(samples::frequency()) + QStringLiteral("</Detail></LocationResult>"));
}

TEST(LocationResult, EmptyStationVectorWritesCountZeroInBinaryAndNothingInXml)
{
    const LocationResult minimal = minimalResult();
    EXPECT_FALSE(minimal.IsStationSet());
    const QByteArray body = bodyOf(minimal.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagTimeStamp, TagDFBandwidth, TagResultDetail, TagStation}));
    EXPECT_EQ(valueOf(body, TagStation), be32(0));
    EXPECT_FALSE(compactXml(minimal).contains(QStringLiteral("Station")));

    LocationResult marked = minimalResult();
    marked.GetStation();
    EXPECT_TRUE(marked.IsStationSet());
    EXPECT_EQ(valueOf(bodyOf(marked.GetBinaryRepresentationAsQByteArray()), TagStation), be32(0));
    EXPECT_EQ(compactXml(marked), compactXml(minimal));
}

TEST(LocationResult, MandatoryMembersMakeItComplete)
{
    EXPECT_TRUE(minimalResult().HasData());
    using Spoil = void (*)(LocationResult &);
    for (Spoil spoil : std::initializer_list<Spoil>{[](LocationResult &r) { r.ResetTimeStamp(); },
                                                    [](LocationResult &r) { r.ResetDFBandwidth(); },
                                                    [](LocationResult &r) { r.ResetDetail(); },
                                                    [](LocationResult &r) { r.SetDetail(LocationResultDetail()); }}) {
        LocationResult r = samples::locationResult();
        spoil(r);
        EXPECT_FALSE(r.HasData()) << r;
        EXPECT_TRUE(r.AnyData());
    }
    LocationResult onlyStations;
    onlyStations.AppendStation(samples::station());
    EXPECT_TRUE(onlyStations.AnyData());
    EXPECT_FALSE(onlyStations.HasData());
    EXPECT_FALSE(LocationResult().AnyData());
}

TEST(LocationResult, CheckNamesStationThenDFBandwidthThenTimeStamp)
{
    expectCheckNamesSpoiled<LocationResult>(samples::locationResult(), "LocationResult", {
        {"DFBandwidth", [](LocationResult &r) { r.ResetDFBandwidth(); }},
        {"TimeStamp", [](LocationResult &r) { r.ResetTimeStamp(); }},
    });

    LocationResult r;
    r.SetValidate(false);
    Station badStation = samples::station();
    badStation.SetValidate(false);
    badStation.SetName(QString());
    r.AppendStation(badStation);
    r.SetLocation(location(16.0, 48.0));
    r.GetLocation().SetLongitude(200.0);
    r.GetDetail().GetFrequency();
    r.GetPlot();
    // The station items come first, before the result's own members.
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "Station: Please set Name properly.");
    r.GetStation()[0].SetName(QStringLiteral("fixed"));
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "LocationResult: Please set DFBandwidth properly.");
    r.SetDFBandwidth(12.5);
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "LocationResult: Please set TimeStamp properly.");
    r.SetTimeStamp(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "Location: Please set Longitude properly.");
    r.GetLocation().SetLongitude(16.0);
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "Frequency: Please set Value properly.");
    r.GetDetail().GetFrequency().SetValue(1.0);
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "Plot: Please set Name properly.");
    r.SetPlot(samples::plot());
    EXPECT_NO_THROW(r.Check());
}

TEST(LocationResult, WritingWithoutDetailFails)
{
    LocationResult r = samples::locationResult();
    r.ResetDetail();
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW_MESSAGE(r.GetXml(writer), IncompleteDefinitionException,
                         "Parameters for Detail are not set properly in 'LocationResult'.");
    EXPECT_TRUE(text.isEmpty());
    testsupport::BinaryWriter binary;
    EXPECT_THROW_MESSAGE(r.GetBinary(binary.stream, int(LocationResult::GetId()), true), IncompleteDefinitionException,
                         "Parameters for Detail are not set properly in 'LocationResult'.");
    EXPECT_TRUE(binary.bytes.isEmpty());

    // A detail without its frequency is as good as none.
    LocationResult emptyDetail = samples::locationResult();
    emptyDetail.SetDetail(LocationResultDetail());
    EXPECT_THROW(emptyDetail.GetXmlString(), IncompleteDefinitionException);

    // With validation off the detail is written from its slot.
    r.SetValidate(false);
    EXPECT_TRUE(compactXml(r).contains(QStringLiteral("</Location><Detail><Frequency>0.00</Frequency></Detail><Plot>")));
}

TEST(LocationResult, StationItemWithoutBlockIsCompletedByCheckBeforeTheWrite)
{
    // A station has no mandatory member: a fresh one lacks data only while it
    // has no block. Check, which runs before the items are written, gives
    // every item its block, so the item is complete when the writer asks and
    // is written as an empty element.
    LocationResult r = minimalResult();
    r.SetValidate(false);
    r.AppendStation(samples::station(1, QStringLiteral("good")));
    r.AppendStation(Station());
    EXPECT_EQ(std::as_const(r).GetStation().size(), 2);
    EXPECT_FALSE(std::as_const(r).GetStation().at(1).HasData());
    r.SetValidate(true);
    QString text;
    {
        QXmlStreamWriter writer(&text);
        EXPECT_NO_THROW(r.GetXml(writer));
    }
    EXPECT_TRUE(text.endsWith(compactXml(samples::station(1, QStringLiteral("good")))
                              + QStringLiteral("<Station/></LocationResult>")));
    EXPECT_TRUE(std::as_const(r).GetStation().at(1).HasData());
}

TEST(LocationResult, AppendRefusesAnIncompleteStation)
{
    LocationResult r = minimalResult();
    EXPECT_THROW_MESSAGE(r.AppendStation(Station()), IncompleteDefinitionException,
                         "LocationResult: Tried to append not completely defined or invalid item Station.");
    EXPECT_TRUE(std::as_const(r).GetStation().isEmpty());
    EXPECT_FALSE(r.IsStationSet());
    r.SetValidate(false);
    r.AppendStation(Station());
    EXPECT_EQ(std::as_const(r).GetStation().size(), 1);
    EXPECT_TRUE(r.IsStationSet());
}

TEST(LocationResult, CopiesAreIndependentAndEqualityReachesDeepMembers)
{
    const LocationResult original = samples::locationResult();
    LocationResult copy(original);
    EXPECT_EQ(copy, original);
    copy.GetStation()[1].GetDFData().GetPlot_Info().GetEmissions().GetEmission()[0].GetBursts().GetBurst()[0].SetLevel(
        -61.5);
    EXPECT_NE(copy, original);
    EXPECT_EQ(original, samples::locationResult());
    EXPECT_EQ(std::as_const(original)
                  .GetStation()
                  .at(1)
                  .GetDFData()
                  .GetPlot_Info()
                  .GetEmissions()
                  .GetEmission()
                  .at(0)
                  .GetBursts()
                  .GetBurst()
                  .at(0)
                  .GetLevel(),
              -61.75);
    // The changed level is in the copy's written form.
    const QByteArray copyXml = compactXml(copy).toUtf8();
    EXPECT_TRUE(copyXml.contains("<Level>-61.50</Level>"));
    EXPECT_FALSE(compactXml(original).contains(QStringLiteral("<Level>-61.50</Level>")));

    LocationResult assigned;
    assigned = original;
    EXPECT_EQ(assigned, original);
    assigned.GetPlot().GetDetail().SetAnalogDemod(PlotDetail::AnalogDemod_AM);
    EXPECT_NE(assigned, original);
    EXPECT_EQ(original.GetPlot().GetDetail().GetAnalogDemod(), PlotDetail::AnalogDemod_F3E);

    LocationResult swapped = original;
    QVector<Station> &stations = swapped.GetStation();
    std::swap(stations[0], stations[1]);
    EXPECT_NE(swapped, original);

    LocationResult moved = original;
    moved.GetLocation().SetLatitude(-89.999999);
    EXPECT_NE(moved, original);
}

TEST(LocationResult, UnknownElementsAndBadValuesInXml)
{
    const QString document = compactXml(samples::locationResult());
    LocationResult extra;
    ASSERT_TRUE(extra.SetXmlString(QString(document).replace(
        QStringLiteral("<DFBandwidth>"), QStringLiteral("<Accuracy><DFBandwidth>1</DFBandwidth></Accuracy><DFBandwidth>"))));
    EXPECT_EQ(extra, samples::locationResult());

    LocationResult numbers;
    ASSERT_TRUE(numbers.SetXmlString(
        QString(document)
            .replace(QStringLiteral("<DFBandwidth>25000.00</DFBandwidth>"), QStringLiteral("<DFBandwidth>wide</DFBandwidth>"))
            .replace(QStringLiteral("2026-11-23T08:31:05,250Z"), QStringLiteral("Monday"))));
    EXPECT_TRUE(numbers.IsDFBandwidthSet());
    EXPECT_EQ(numbers.GetDFBandwidth(), 0.0);
    EXPECT_TRUE(numbers.IsTimeStampSet());
    EXPECT_FALSE(numbers.GetTimeStamp().isValid());

    // A position out of range is refused with validation on.
    const QString far = QString(document).replace(QStringLiteral("<Longitude>16.410000</Longitude>"),
                                                  QStringLiteral("<Longitude>181</Longitude>"));
    LocationResult strict = minimalResult();
    EXPECT_FALSE(strict.SetXmlString(far));
    EXPECT_TRUE(keeps(minimalResult(), strict));
    EXPECT_THROW_MESSAGE(strict.SetXmlString(far, true), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Location'.");
    LocationResult lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetXmlString(far));
    EXPECT_EQ(lax.GetLocation().GetLongitude(), 181.0);
}

TEST(LocationResult, BadInputKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::locationResult(), minimalResult());
    expectBadBinaryKeepsRecord(samples::locationResult(), minimalResult());

    // A station whose length field is one byte short breaks the whole result.
    const LocationResult r = samples::locationResult();
    const QByteArray body = nestedBody(r);
    const QVector<Frame> frames = splitFrames(body);
    QByteArray spoiled;
    for (const Frame &f : frames) {
        QByteArray value = f.value;
        if (f.tag == TagStation)
            value.replace(4, 4, be32(readBe32(value, 4) - 1));
        spoiled += frame(f.tag, value);
    }
    QByteArray rep = representation(LocationResult::GetId(), spoiled);
    LocationResult kept = minimalResult();
    EXPECT_FALSE(kept.SetBinaryRepresentation(rep));
    EXPECT_TRUE(keeps(minimalResult(), kept));

    // Members read before the failure stay in a record read directly.
    testsupport::BinaryReader reader(spoiled);
    LocationResult direct;
    EXPECT_THROW(direct.SetBinary(reader.stream, spoiled.size()), BinaryParsingException);
    EXPECT_EQ(direct.GetDFBandwidth(), 25000.0);
    EXPECT_EQ(direct.GetDetail(), samples::locationResultDetail());
}

TEST(LocationResult, UnknownTagsAndUnreadableValuesInBinary)
{
    const QByteArray body = nestedBody(samples::locationResult());
    const QVector<Frame> frames = splitFrames(body);
    QByteArray spliced;
    for (int i = 0; i < frames.size(); ++i) {
        spliced += frame(frames.at(i).tag, frames.at(i).value);
        if (i == 1)
            spliced += frame(0x0badf00du, QByteArray(7, '\x55'));
    }
    QByteArray rep = representation(LocationResult::GetId(), spliced);
    LocationResult read;
    ASSERT_TRUE(read.SetBinaryRepresentation(rep));
    EXPECT_EQ(read, samples::locationResult());

    QByteArray bad = representation(LocationResult::GetId(),
                                    frame(TagDFBandwidth, utf8Value(QStringLiteral("n/a")))
                                        + frame(TagTimeStamp, utf8Value(QStringLiteral("2026-13-45"))));
    LocationResult lax;
    ASSERT_TRUE(lax.SetBinaryRepresentation(bad));
    EXPECT_TRUE(lax.IsDFBandwidthSet());
    EXPECT_EQ(lax.GetDFBandwidth(), 0.0);
    EXPECT_TRUE(lax.IsTimeStampSet());
    EXPECT_FALSE(lax.GetTimeStamp().isValid());
}

// --- LocationResultLocation -----------------------------------------------------------------

TEST(LocationResultLocation, WritesSixDecimalsUnderTheElementLocation)
{
    const LocationResultLocation l = location(-180.0, 90.0);
    EXPECT_EQ(compactXml(l), QStringLiteral("<Location><Longitude>-180.000000</Longitude>"
                                            "<Latitude>90.000000</Latitude></Location>"));
    const QByteArray body = bodyOf(l.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagLongitude, TagLatitude}));
    EXPECT_EQ(valueOf(body, TagLongitude), utf8Value(QStringLiteral("-180.000000")));
    EXPECT_EQ(valueOf(body, TagLatitude), utf8Value(QStringLiteral("90.000000")));
    EXPECT_EQ(compactXml(location(0.0000004, -0.000001)),
              QStringLiteral("<Location><Longitude>0.000000</Longitude><Latitude>-0.000001</Latitude></Location>"));
    roundTrip(l);
    roundTrip(location(16.373819, 48.208174));
}

TEST(LocationResultLocation, RangesAreClosedAndTheirMessagesNameTheMember)
{
    LocationResultLocation l;
    EXPECT_NO_THROW(l.SetLongitude(180.0));
    EXPECT_NO_THROW(l.SetLatitude(-90.0));
    EXPECT_NO_THROW(l.SetLongitude(-180.0));
    EXPECT_NO_THROW(l.SetLatitude(90.0));
    EXPECT_THROW_MESSAGE(l.SetLongitude(180.000001), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Location'.");
    EXPECT_THROW_MESSAGE(l.SetLatitude(-90.000001), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Location'.");
    EXPECT_THROW_MESSAGE(l.SetLongitude(std::numeric_limits<double>::quiet_NaN()), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Location'.");
    EXPECT_EQ(l.GetLongitude(), -180.0);
    EXPECT_EQ(l.GetLatitude(), 90.0);
    EXPECT_FALSE(l.IsValidLongitude(-180.5));
    EXPECT_TRUE(l.IsValidLatitude(-90.0));

    LocationResultLocation lax;
    lax.SetValidate(false);
    lax.SetLatitude(1000.0);
    EXPECT_TRUE(lax.IsLatitudeSet());
    EXPECT_EQ(lax.GetLatitude(), 1000.0);
    EXPECT_FALSE(lax.IsValidLatitude(1000.0));
}

TEST(LocationResultLocation, BothCoordinatesAreMandatory)
{
    expectCheckNamesSpoiled<LocationResultLocation>(location(16.0, 48.0), "Location", {
        {"Longitude", [](LocationResultLocation &l) { l.ResetLongitude(); }},
        {"Longitude", [](LocationResultLocation &l) { l.SetLongitude(-181.0); }},
        {"Latitude", [](LocationResultLocation &l) { l.ResetLatitude(); }},
        {"Latitude", [](LocationResultLocation &l) { l.SetLatitude(90.5); }},
    });
    LocationResultLocation half;
    half.SetLatitude(1.0);
    EXPECT_TRUE(half.AnyData());
    EXPECT_FALSE(half.HasData());
    EXPECT_THROW_MESSAGE(half.GetXmlString(), OutOfRangeException, "Location: Please set Longitude properly.");
    half.SetValidate(false);
    EXPECT_EQ(compactXml(half), QStringLiteral("<Location><Longitude>0.000000</Longitude>"
                                               "<Latitude>1.000000</Latitude></Location>"));
}

TEST(LocationResultLocation, BadInputKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(location(-180.0, 90.0), location(1.0, 2.0));
    expectBadBinaryKeepsRecord(location(-180.0, 90.0), location(1.0, 2.0));
    LocationResultLocation numbers;
    ASSERT_TRUE(numbers.SetXmlString(QStringLiteral("<Location><Longitude>east</Longitude>"
                                                    "<Latitude>12.5</Latitude></Location>")));
    EXPECT_TRUE(numbers.IsLongitudeSet());
    EXPECT_EQ(numbers.GetLongitude(), 0.0);
    QByteArray outOfRange = representation(LocationResultLocation::GetId(),
                                           frame(TagLongitude, utf8Value(QStringLiteral("-200.000000"))));
    LocationResultLocation strict = location(1.0, 2.0);
    EXPECT_FALSE(strict.SetBinaryRepresentation(outOfRange));
    EXPECT_EQ(strict, location(1.0, 2.0));
}

// --- LocationResultDetail -------------------------------------------------------------------

TEST(LocationResultDetail, HoldsTheFrequencyUnderTheElementDetail)
{
    const LocationResultDetail d = samples::locationResultDetail();
    EXPECT_EQ(compactXml(d), QStringLiteral("<Detail>") + compactXml(samples::frequency()) + QStringLiteral("</Detail>"));
    const QByteArray body = bodyOf(d.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), QVector<quint32>{TagFrequency});
    EXPECT_EQ(valueOf(body, TagFrequency), nestedBody(samples::frequency()));
    roundTrip(d);
    LocationResultDetail copy = d;
    copy.GetFrequency().SetMax(1.0);
    EXPECT_NE(copy, d);
    EXPECT_EQ(d.GetFrequency(), samples::frequency());
}

TEST(LocationResultDetail, WritingWithoutFrequencyFails)
{
    LocationResultDetail d;
    d.SetValidate(true);
    d.GetFrequency();
    EXPECT_FALSE(d.HasData());
    EXPECT_THROW_MESSAGE(d.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'Detail'.");
    LocationResultDetail unset;
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW_MESSAGE(unset.GetXml(writer), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'Detail'.");
    EXPECT_TRUE(text.isEmpty());
    unset.SetValidate(false);
    EXPECT_EQ(compactXml(unset), QStringLiteral("<Detail><Frequency>0.00</Frequency></Detail>"));
}

TEST(LocationResultDetail, BadInputKeepsTheRecord)
{
    LocationResultDetail start;
    start.SetFrequency(samples::valueRecord<Frequency>(3.0));
    expectBrokenXmlKeepsRecord(samples::locationResultDetail(), start);
    expectBadBinaryKeepsRecord(samples::locationResultDetail(), start);
}

// --- Detection ------------------------------------------------------------------------------

TEST(DetectionTimes, WritesStartThenStop)
{
    const Detection d = samples::detection();
    EXPECT_EQ(compactXml(d), QStringLiteral("<Detection><StartTime>2026-11-23T08:30:00,000Z</StartTime>"
                                            "<StopTime>2026-11-23T08:45:30,999Z</StopTime></Detection>"));
    const QByteArray body = bodyOf(d.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagStartTime, TagStopTime}));
    EXPECT_EQ(valueOf(body, TagStopTime), utf8Value(Converters::ToString(samples::utc(2026, 11, 23, 8, 45, 30, 999))));
    const RoundTrip<Detection> trip = roundTrip(d);
    EXPECT_EQ(trip.fromXml.GetStopTime(), samples::utc(2026, 11, 23, 8, 45, 30, 999));
}

TEST(DetectionTimes, OnlyStartTimeWritesStartTimeAlone)
{
    Detection d;
    d.SetStartTime(samples::utc(2026, 11, 23, 8, 30, 0, 0));
    EXPECT_TRUE(d.HasData());
    EXPECT_EQ(compactXml(d), QStringLiteral("<Detection><StartTime>2026-11-23T08:30:00,000Z</StartTime></Detection>"));
    EXPECT_EQ(tagsOf(bodyOf(d.GetBinaryRepresentationAsQByteArray())), QVector<quint32>{TagStartTime});
    const RoundTrip<Detection> trip = roundTrip(d);
    EXPECT_FALSE(trip.fromXml.IsStopTimeSet());
    EXPECT_FALSE(trip.fromBinary.IsStopTimeSet());
}

TEST(DetectionTimes, CheckNamesStartTime)
{
    Detection d;
    d.SetStopTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_TRUE(d.AnyData());
    EXPECT_FALSE(d.HasData());
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detection: Please set StartTime properly.");
    EXPECT_THROW_MESSAGE(d.GetXmlString(), OutOfRangeException, "Detection: Please set StartTime properly.");
    expectCheckNamesSpoiled<Detection>(samples::detection(), "Detection", {
        {"StartTime", [](Detection &x) { x.ResetStartTime(); }},
    });
    d.SetValidate(false);
    EXPECT_EQ(compactXml(d), QStringLiteral("<Detection><StartTime></StartTime>"
                                            "<StopTime>2026-01-01T00:00:00,000Z</StopTime></Detection>"));
}

TEST(DetectionTimes, CopiesAndBadInput)
{
    Detection copy = samples::detection();
    copy.SetStopTime(samples::utc(2026, 11, 23, 8, 45, 31, 0));
    EXPECT_NE(copy, samples::detection());
    Detection start;
    start.SetStartTime(samples::utc(2000, 1, 1, 0, 0, 0, 0));
    expectBrokenXmlKeepsRecord(samples::detection(), start);
    expectBadBinaryKeepsRecord(samples::detection(), start);
    Detection dates;
    ASSERT_TRUE(dates.SetXmlString(QStringLiteral("<Detection><StartTime>now</StartTime><Other/></Detection>")));
    EXPECT_TRUE(dates.IsStartTimeSet());
    EXPECT_FALSE(dates.GetStartTime().isValid());
    EXPECT_FALSE(dates.IsStopTimeSet());
}

// --- ResultList -----------------------------------------------------------------------------

TEST(ResultList, WritesReasonTimeAndConfidence)
{
    const ResultList r = samples::resultList();
    EXPECT_EQ(compactXml(r), QStringLiteral("<ResultList><Reason>matched profile P-0042</Reason>"
                                            "<ResultTime>2026-11-23T08:46:00,000Z</ResultTime>"
                                            "<Confidence>93</Confidence></ResultList>"));
    const QByteArray body = bodyOf(r.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagReason, TagResultTime, TagConfidence}));
    EXPECT_EQ(valueOf(body, TagReason), utf8Value(QStringLiteral("matched profile P-0042")));
    EXPECT_EQ(valueOf(body, TagConfidence), be32(93));
    EXPECT_EQ(valueOf(body, TagConfidence).size(), 4);
    roundTrip(r);

    ResultList onlyConfidence;
    onlyConfidence.SetConfidence(-1);
    EXPECT_TRUE(onlyConfidence.HasData());
    EXPECT_EQ(compactXml(onlyConfidence), QStringLiteral("<ResultList><Confidence>-1</Confidence></ResultList>"));
    EXPECT_EQ(bodyOf(onlyConfidence.GetBinaryRepresentationAsQByteArray()), frame(TagConfidence, be32(0xffffffffu)));
    EXPECT_EQ(roundTrip(onlyConfidence).fromBinary.GetConfidence(), -1);

    ResultList emptyReason = onlyConfidence;
    emptyReason.SetReason(QLatin1String(""));
    EXPECT_EQ(compactXml(emptyReason),
              QStringLiteral("<ResultList><Reason></Reason><Confidence>-1</Confidence></ResultList>"));
    const RoundTrip<ResultList> trip = roundTrip(emptyReason);
    EXPECT_TRUE(trip.fromXml.IsReasonSet());
    EXPECT_FALSE(trip.fromXml.GetReason().isNull());
}

TEST(ResultList, RefusesANullReasonAndNamesConfidence)
{
    ResultList r;
    EXPECT_THROW_MESSAGE(r.SetReason(QString()), OutOfRangeException, "ResultList: Please set Reason properly.");
    EXPECT_FALSE(r.IsReasonSet());
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "ResultList: Please set Confidence properly.");
    expectCheckNamesSpoiled<ResultList>(samples::resultList(), "ResultList", {
        {"Reason", [](ResultList &x) { x.SetReason(QString()); }},
        {"Confidence", [](ResultList &x) { x.ResetConfidence(); }},
    });
    // Reason comes before Confidence.
    ResultList both;
    both.SetValidate(false);
    both.SetReason(QString());
    EXPECT_THROW_MESSAGE(both.Check(), OutOfRangeException, "ResultList: Please set Reason properly.");
    ResultList noConfidence = samples::resultList();
    noConfidence.ResetConfidence();
    EXPECT_FALSE(noConfidence.HasData());
    EXPECT_THROW_MESSAGE(noConfidence.GetXmlString(), OutOfRangeException, "ResultList: Please set Confidence properly.");
}

TEST(ResultList, CopiesAndBadInput)
{
    ResultList copy = samples::resultList();
    copy.SetConfidence(94);
    EXPECT_NE(copy, samples::resultList());
    ResultList start;
    start.SetConfidence(1);
    expectBrokenXmlKeepsRecord(samples::resultList(), start);
    expectBadBinaryKeepsRecord(samples::resultList(), start);
    ResultList numbers;
    ASSERT_TRUE(numbers.SetXmlString(QStringLiteral("<ResultList><Confidence>high</Confidence>"
                                                    "<ResultTime>later</ResultTime></ResultList>")));
    EXPECT_TRUE(numbers.IsConfidenceSet());
    EXPECT_EQ(numbers.GetConfidence(), 0);
    EXPECT_TRUE(numbers.IsResultTimeSet());
    EXPECT_FALSE(numbers.GetResultTime().isValid());
}
