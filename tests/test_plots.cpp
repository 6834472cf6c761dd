// Tests of plots and emissions: Plot with its radius-or-ellipse choice,
// PlotDetail, FrequencyList and its Value items, and the direction finder's
// Plot_Info with Emissions, Emission, Bursts and Burst.

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

QString timeText(const QDateTime &time)
{
    return Converters::ToString(time);
}

QString element(const QString &name, const QString &text)
{
    return QStringLiteral("<%1>%2</%1>").arg(name, text);
}

Plot plotWithoutBranch()
{
    Plot p;
    p.SetName(QStringLiteral("no branch"));
    p.SetBandwidth(samples::bandwidth());
    p.SetType(Plot::Type_Static);
    p.SetStartTime(samples::utc(2026, 1, 2, 3, 4, 5, 6));
    p.SetStopTime(samples::utc(2026, 1, 2, 3, 4, 6, 7));
    p.SetDetail(samples::plotDetail());
    return p;
}

// samples::plotWithRadius() without the ellipse it held before.
Plot radiusOnlyPlot()
{
    Plot p = samples::plotWithRadius();
    p.ResetEllipse();
    return p;
}

Burst minimalBurst()
{
    Burst b;
    b.SetFrequency(samples::valueRecord<Frequency>(100.0));
    b.SetBandwidth(samples::valueRecord<Bandwidth>(10.0));
    b.SetQuality(1.0);
    b.SetAzimuth(2.0);
    b.SetAzimuthVar(3.0);
    b.SetLevel(4.0);
    b.SetStartTime(samples::utc(2026, 2, 1, 0, 0, 0, 0));
    b.SetStopTime(samples::utc(2026, 2, 1, 0, 0, 1, 0));
    return b;
}

Emission minimalEmission()
{
    Emission e;
    e.SetAzimuth(10.0);
    e.SetAzimuthVar(0.5);
    e.SetLevel(-80.0);
    e.SetStartTime(samples::utc(2026, 2, 1, 0, 0, 0, 0));
    e.SetStopTime(samples::utc(2026, 2, 1, 0, 1, 0, 0));
    return e;
}

const QString plotStart = QStringLiteral("2026-11-23T08:00:00,000Z");
const QString plotStop = QStringLiteral("2026-11-23T09:00:00,001Z");

// The XML of samples::plot() up to its branch, and from its StartTime on.
QString plotHead()
{
    return QStringLiteral("<Plot><Name>Hopper 1</Name><Signal_ID>4711</Signal_ID><Emitter_ID>-3</Emitter_ID>")
        + compactXml(samples::bandwidth()) + QStringLiteral("<Type>Hopper</Type>");
}

QString plotTail()
{
    return element(QStringLiteral("StartTime"), plotStart) + element(QStringLiteral("StopTime"), plotStop)
        + QStringLiteral("<FrequencyList><Value><Frequency>145525000.00</Frequency>"
                         "<TimeStamp>2026-11-23T08:00:00,000Z</TimeStamp></Value>"
                         "<Value><Frequency>145550000.00</Frequency></Value></FrequencyList>"
                         "<Detail><Comment>hopping over three channels</Comment><AnalogDemod>F3E</AnalogDemod>"
                         "</Detail></Plot>");
}

} // namespace

// --- Plot -----------------------------------------------------------------------------------

TEST(Plot, IdsAndElementNames)
{
    EXPECT_EQ(Plot::GetId(), qint64(qint32(0xc4408a7c)));
    EXPECT_EQ(Plot::GetId(), qint64(0xffffffffc4408a7cull));
    EXPECT_EQ(PlotDetail::GetId(), qint64(qint32(0x9eeb45a4)));
    EXPECT_LT(PlotDetail::GetId(), 0);
    EXPECT_EQ(FrequencyList::GetId(), qint64(0x051afc1b));
    EXPECT_EQ(Value::GetId(), qint64(0x3b9eb897));
    EXPECT_EQ(Plot().GetObjectName(), QStringLiteral("Plot"));
    // The plot's detail is an element "Detail", not "PlotDetail".
    EXPECT_EQ(PlotDetail().GetObjectName(), QStringLiteral("Detail"));
    EXPECT_EQ(FrequencyList().GetObjectName(), QStringLiteral("FrequencyList"));
    EXPECT_EQ(Value().GetObjectName(), QStringLiteral("Value"));
}

TEST(Plot, TypeNamesWalkBothWays)
{
    checkEnumeration({"Hopper", "Burst", "Static", "Chirp"}, &Plot::GetTypes, &Plot::GetGUITypes, &Plot::TypeToName,
                     &Plot::NameToType, &Plot::IsValidType);
    EXPECT_EQ(int(Plot::Type_Hopper), 0);
    EXPECT_EQ(int(Plot::Type_Chirp), 3);
    Plot p;
    EXPECT_EQ(int(p.GetType()), -1);
    EXPECT_EQ(int(p.GetInvalidType()), -1);
    EXPECT_FALSE(p.IsTypeSet());
    EXPECT_EQ(int(p.NameToType(QStringLiteral("hopper"))), -1);
    p.SetInvalidType(Plot::Type(9));
    EXPECT_EQ(int(p.NameToType(QStringLiteral("Spread"))), 9);
}

TEST(Plot, ChoiceNamesWalkBothWays)
{
    // The choice's name list is walked by hand: a value past the list has no
    // name that the record promises.
    const QStringList names = {"Radius", "Ellipse"};
    EXPECT_EQ(Plot::GetChoicePlots(), names);
    EXPECT_EQ(Plot::GetGUIChoicePlots(), names);
    EXPECT_EQ(int(Plot::ChoicePlot_Radius), 0);
    EXPECT_EQ(int(Plot::ChoicePlot_Ellipse), 1);
    Plot p;
    for (int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(p.ChoicePlotToName(Plot::ChoicePlot(i)), names.at(i));
        EXPECT_EQ(int(p.NameToChoicePlot(names.at(i))), i);
        EXPECT_TRUE(p.IsValidChoicePlot(Plot::ChoicePlot(i)));
    }
    EXPECT_EQ(int(p.NameToChoicePlot(QStringLiteral("radius"))), -1);
    EXPECT_EQ(int(p.NameToChoicePlot(QStringLiteral("Circle"))), -1);
    EXPECT_TRUE(p.ChoicePlotToName(Plot::ChoicePlot(-1)).isNull());
    EXPECT_FALSE(p.IsValidChoicePlot(Plot::ChoicePlot(-1)));
    EXPECT_FALSE(p.IsValidChoicePlot(Plot::ChoicePlot(2)));
    EXPECT_EQ(int(p.GetInvalidChoicePlot()), -1);
    // A new plot has no branch selected.
    EXPECT_EQ(int(p.GetChoicePlot()), -1);
}

TEST(Plot, SetTypeRefusesValuesOutsideTheTable)
{
    Plot p;
    p.SetType(Plot::Type_Burst);
    for (int bad : {-1, 4, 100}) {
        EXPECT_THROW_MESSAGE(p.SetType(Plot::Type(bad)), OutOfRangeException,
                             "enum is not valid (classname=Plot,membername=m_type)");
        EXPECT_EQ(p.GetType(), Plot::Type_Burst);
        EXPECT_TRUE(p.IsTypeSet());
    }
    Plot fresh;
    EXPECT_THROW_MESSAGE(fresh.SetType(Plot::Type(4)), OutOfRangeException,
                         "enum is not valid (classname=Plot,membername=m_type)");
    EXPECT_FALSE(fresh.IsTypeSet());
    fresh.SetValidate(false);
    fresh.SetType(Plot::Type(4));
    EXPECT_TRUE(fresh.IsTypeSet());
    EXPECT_EQ(int(fresh.GetType()), 4);
    EXPECT_TRUE(fresh.GetTypeAsString().isNull());
}

TEST(Plot, UnknownTypeNameReadFromXml)
{
    const QString document = compactXml(samples::plot())
                                 .replace(QStringLiteral("<Type>Hopper</Type>"), QStringLiteral("<Type>Spread</Type>"));
    const Plot read = readUnknownEnumName(document, QStringLiteral("enum is not valid (classname=Plot,membername=m_type)"),
                                          &Plot::IsTypeSet, &Plot::GetType);
    EXPECT_EQ(read.GetName(), QStringLiteral("Hopper 1"));
    EXPECT_EQ(read.GetDetail(), samples::plotDetail());
}

TEST(Plot, WritesItsMembersInTableOrder)
{
    const Plot p = samples::plot();
    EXPECT_EQ(compactXml(p), plotHead()
                                 + QStringLiteral("<Ellipse><MinRadius>10.00</MinRadius><MaxRadius>20.00</MaxRadius>"
                                                  "<Rotation>45.00</Rotation></Ellipse>")
                                 + plotTail());
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagName, TagSignalID, TagEmitterID, TagBandwidth, TagPlotType, TagEllipse,
                                              TagStartTime, TagStopTime, TagFrequencyList, TagPlotDetail}));
    EXPECT_EQ(valueOf(body, TagName), utf8Value(QStringLiteral("Hopper 1")));
    EXPECT_EQ(valueOf(body, TagBandwidth), nestedBody(samples::bandwidth()));
    EXPECT_EQ(valueOf(body, TagPlotType), utf8Value(QStringLiteral("Hopper")));
    EXPECT_EQ(valueOf(body, TagEllipse), nestedBody(samples::ellipse(10.0, 20.0, 45.0)));
    EXPECT_EQ(valueOf(body, TagStartTime), utf8Value(plotStart));
    EXPECT_EQ(valueOf(body, TagStopTime), utf8Value(plotStop));
    EXPECT_EQ(valueOf(body, TagFrequencyList), nestedBody(p.GetFrequencyList()));
    EXPECT_EQ(valueOf(body, TagPlotDetail), nestedBody(samples::plotDetail()));
}

TEST(Plot, IdentifiersAreRawIntegersInBinaryAndDecimalsInXml)
{
    Plot p = samples::plot();
    p.SetSignal_ID(std::numeric_limits<int>::min());
    p.SetEmitter_ID(std::numeric_limits<int>::max());
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(valueOf(body, TagSignalID), be32(0x80000000u));
    EXPECT_EQ(valueOf(body, TagEmitterID), be32(0x7fffffffu));
    EXPECT_EQ(valueOf(body, TagSignalID).size(), 4);
    EXPECT_TRUE(compactXml(p).contains(QStringLiteral("<Signal_ID>-2147483648</Signal_ID><Emitter_ID>2147483647</Emitter_ID>")));
    const RoundTrip<Plot> trip = roundTrip(p);
    EXPECT_EQ(trip.fromBinary.GetSignal_ID(), std::numeric_limits<int>::min());
    EXPECT_EQ(trip.fromXml.GetEmitter_ID(), std::numeric_limits<int>::max());

    const Plot sample = samples::plot();
    const QByteArray sampleBody = bodyOf(sample.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(valueOf(sampleBody, TagSignalID), be32(4711));
    EXPECT_EQ(valueOf(sampleBody, TagEmitterID), be32(quint32(-3)));
}

TEST(Plot, OptionalMembersAreWrittenOnlyWhenSet)
{
    Plot p = samples::plot();
    p.ResetSignal_ID();
    p.ResetEmitter_ID();
    p.ResetFrequencyList();
    EXPECT_TRUE(p.HasData());
    const QString xml = compactXml(p);
    EXPECT_FALSE(xml.contains(QStringLiteral("Signal_ID")));
    EXPECT_FALSE(xml.contains(QStringLiteral("Emitter_ID")));
    EXPECT_FALSE(xml.contains(QStringLiteral("FrequencyList")));
    EXPECT_EQ(tagsOf(bodyOf(p.GetBinaryRepresentationAsQByteArray())),
              (QVector<quint32>{TagName, TagBandwidth, TagPlotType, TagEllipse, TagStartTime, TagStopTime, TagPlotDetail}));
    roundTrip(p);
}

TEST(Plot, RadiusBranchIsWrittenWithTwoDecimalsInBothForms)
{
    const Plot p = samples::plotWithRadius();
    EXPECT_EQ(p.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_EQ(compactXml(p), plotHead() + QStringLiteral("<Radius>750.25</Radius>") + plotTail());
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagName, TagSignalID, TagEmitterID, TagBandwidth, TagPlotType, TagRadius,
                                              TagStartTime, TagStopTime, TagFrequencyList, TagPlotDetail}));
    EXPECT_EQ(valueOf(body, TagRadius), utf8Value(QStringLiteral("750.25")));

    Plot rounded = samples::plotWithRadius();
    rounded.SetRadius(-1234.5);
    EXPECT_TRUE(compactXml(rounded).contains(QStringLiteral("<Radius>-1234.50</Radius>")));
}

TEST(Plot, OnlyTheSelectedBranchIsWrittenWhenBothAreSet)
{
    // plotWithRadius() had its ellipse set before the radius.
    Plot p = samples::plotWithRadius();
    EXPECT_TRUE(p.IsEllipseSet());
    EXPECT_TRUE(p.IsRadiusSet());
    EXPECT_FALSE(compactXml(p).contains(QStringLiteral("Ellipse")));
    EXPECT_FALSE(hasTag(bodyOf(p.GetBinaryRepresentationAsQByteArray()), TagEllipse));

    // Setting the ellipse again selects it; the radius stays set but unwritten.
    p.SetEllipse(samples::ellipse());
    EXPECT_EQ(p.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_TRUE(p.IsRadiusSet());
    const QString xml = compactXml(p);
    EXPECT_FALSE(xml.contains(QStringLiteral("Radius>750.25")));
    EXPECT_TRUE(xml.contains(compactXml(samples::ellipse())));
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_FALSE(hasTag(body, TagRadius));
    EXPECT_EQ(valueOf(body, TagEllipse), nestedBody(samples::ellipse()));

    // Fetching a branch for writing selects it too.
    p.GetEllipse();
    EXPECT_EQ(p.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    Plot q = samples::plot();
    EXPECT_EQ(q.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    q.SetRadius(1.0);
    EXPECT_EQ(q.GetChoicePlot(), Plot::ChoicePlot_Radius);
    q.GetEllipse().SetRotation(90.0);
    EXPECT_EQ(q.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_TRUE(compactXml(q).contains(QStringLiteral("<Rotation>90.00</Rotation>")));
}

TEST(Plot, InitChoiceRadiusWithoutAValueWritesTheDefaultSlot)
{
    Plot p = samples::plot();
    p.InitChoice(Plot::ChoicePlot_Radius);
    // InitChoice starts from a reset record.
    EXPECT_FALSE(p.IsNameSet());
    EXPECT_FALSE(p.IsEllipseSet());
    EXPECT_FALSE(p.IsDetailSet());
    EXPECT_EQ(p.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_TRUE(p.IsRadiusSet());
    EXPECT_EQ(p.GetRadius(), 0.0);
    p.SetValidate(false);
    EXPECT_TRUE(compactXml(p).contains(QStringLiteral("<Type></Type><Radius>0.00</Radius><StartTime>")));
    EXPECT_EQ(valueOf(bodyOf(p.GetBinaryRepresentationAsQByteArray()), TagRadius), utf8Value(QStringLiteral("0.00")));

    Plot withDefault = samples::plot();
    withDefault.SetDefaultRadius(12.5);
    withDefault.InitChoice(Plot::ChoicePlot_Radius);
    EXPECT_TRUE(withDefault.IsRadiusSet());
    EXPECT_EQ(withDefault.GetRadius(), 12.5);
    withDefault.SetValidate(false);
    EXPECT_TRUE(compactXml(withDefault).contains(QStringLiteral("<Radius>12.50</Radius>")));
}

TEST(Plot, InitChoiceEllipseSelectsAnEmptyBranch)
{
    Plot p = plotWithoutBranch();
    p.InitChoice(Plot::ChoicePlot_Ellipse);
    EXPECT_EQ(p.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_TRUE(p.IsEllipseSet());
    EXPECT_FALSE(p.GetEllipse().AnyData());
    EXPECT_FALSE(p.HasData());
    EXPECT_THROW_MESSAGE(
        p.Check(), IncompleteDefinitionException,
        "Plot:Check failed. The mandatory member m_ellipse is not set or mandatory data of the member is not set.");
    // Without validation the empty ellipse is checked as any set child.
    p.SetValidate(false);
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Ellipse: Please set MinRadius properly.");
    EXPECT_EQ(compactXml(p), QStringLiteral("<Plot><Name></Name><Bandwidth>0.00</Bandwidth><Type></Type>"
                                            "<Ellipse><MinRadius>0.00</MinRadius><MaxRadius>0.00</MaxRadius>"
                                            "<Rotation>0.00</Rotation></Ellipse><StartTime></StartTime>"
                                            "<StopTime></StopTime><Detail><AnalogDemod></AnalogDemod></Detail></Plot>"));
}

TEST(Plot, InitChoiceWithTheInvalidValueThrows)
{
    Plot p = samples::plot();
    EXPECT_THROW_MESSAGE(p.InitChoice(Plot::ChoicePlot(-1)), OutOfRangeException, "Invalid enum value set in 'Plot'.");
    // The reset comes before the test.
    EXPECT_FALSE(p.IsNameSet());
    EXPECT_FALSE(p.IsEllipseSet());
    EXPECT_EQ(int(p.GetChoicePlot()), -1);
    EXPECT_FALSE(p.HasData());

    // A value that names no branch clears the plot and selects none.
    Plot none = samples::plot();
    none.InitChoice(Plot::ChoicePlot(2));
    EXPECT_FALSE(none.IsRadiusSet());
    EXPECT_FALSE(none.IsEllipseSet());
    EXPECT_FALSE(none.IsNameSet());
    EXPECT_EQ(int(none.GetChoicePlot()), -1);
    EXPECT_FALSE(none.HasData());
}

TEST(Plot, WithoutABranchIsIncompleteAndWrittenNotAtAll)
{
    const Plot p = plotWithoutBranch();
    EXPECT_EQ(int(p.GetChoicePlot()), -1);
    EXPECT_TRUE(p.AnyData());
    EXPECT_FALSE(p.HasData());
    EXPECT_NO_THROW(p.Check());
    EXPECT_TRUE(compactXml(p).isEmpty());
    EXPECT_TRUE(testsupport::binaryOf(p, int(Plot::GetId()), true).isEmpty());
    testsupport::BinaryWriter writer;
    EXPECT_FALSE(p.GetBinary(writer.stream, int(Plot::GetId()), true));
    EXPECT_TRUE(writer.bytes.isEmpty());

    // With validation off neither branch is written.
    Plot lax = plotWithoutBranch();
    lax.SetValidate(false);
    const QString xml = compactXml(lax);
    EXPECT_TRUE(xml.contains(QStringLiteral("<Type>Static</Type><StartTime>")));
    EXPECT_FALSE(xml.contains(QStringLiteral("Radius")));
    EXPECT_FALSE(xml.contains(QStringLiteral("Ellipse")));
    const QByteArray body = bodyOf(lax.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagName, TagBandwidth, TagPlotType, TagStartTime, TagStopTime, TagPlotDetail}));

    // A plot inside a location result without a branch is dropped silently.
    LocationResult r = samples::locationResult();
    r.SetPlot(plotWithoutBranch());
    EXPECT_FALSE(compactXml(r).contains(QStringLiteral("<Plot>")));
}

TEST(Plot, RadiusBranchWithoutAValueFailsCheck)
{
    Plot p = samples::plotWithRadius();
    p.ResetRadius();
    EXPECT_EQ(p.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_FALSE(p.HasData());
    EXPECT_THROW_MESSAGE(p.Check(), IncompleteDefinitionException, "Plot:Check failed. m_radius is not set");
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW_MESSAGE(p.GetXml(writer), IncompleteDefinitionException, "Plot:Check failed. m_radius is not set");
    EXPECT_TRUE(text.isEmpty());
    // With validation off the selected radius is written without a presence test.
    p.SetValidate(false);
    EXPECT_NO_THROW(p.Check());
    EXPECT_TRUE(compactXml(p).contains(QStringLiteral("<Type>Hopper</Type><Radius>0.00</Radius><StartTime>")));
    EXPECT_EQ(valueOf(bodyOf(p.GetBinaryRepresentationAsQByteArray()), TagRadius), utf8Value(QStringLiteral("0.00")));
}

TEST(Plot, ReadingSelectsTheBranch)
{
    Plot fromXml = samples::plot();
    ASSERT_TRUE(fromXml.SetXmlString(compactXml(samples::plotWithRadius())));
    EXPECT_EQ(fromXml.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_EQ(fromXml.GetRadius(), 750.25);

    Plot fresh;
    fresh.SetValidate(false);
    ASSERT_TRUE(fresh.SetXmlString(QStringLiteral("<Plot><Ellipse><MinRadius>1</MinRadius><MaxRadius>2</MaxRadius>"
                                                  "<Rotation>3</Rotation></Ellipse></Plot>")));
    EXPECT_EQ(fresh.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_EQ(fresh.GetEllipse(), samples::ellipse(1.0, 2.0, 3.0));
    EXPECT_FALSE(fresh.IsRadiusSet());

    // The branch read last is the one selected.
    Plot both;
    both.SetValidate(false);
    ASSERT_TRUE(both.SetXmlString(QStringLiteral("<Plot><Ellipse><MinRadius>1</MinRadius><MaxRadius>2</MaxRadius>"
                                                 "<Rotation>3</Rotation></Ellipse><Radius>7.5</Radius></Plot>")));
    EXPECT_EQ(both.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_TRUE(both.IsEllipseSet());

    Plot fromBinary;
    fromBinary.SetValidate(false);
    QByteArray rep = representation(Plot::GetId(), frame(TagName, utf8Value(QStringLiteral("r")))
                                                       + frame(TagRadius, utf8Value(QStringLiteral("3.5"))));
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(rep));
    EXPECT_EQ(fromBinary.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_EQ(fromBinary.GetRadius(), 3.5);

    Plot ellipseFromBinary = samples::plotWithRadius();
    QByteArray ellipseRep = samples::plot().GetBinaryRepresentationAsQByteArray();
    ASSERT_TRUE(ellipseFromBinary.SetBinaryRepresentation(ellipseRep));
    EXPECT_EQ(ellipseFromBinary.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
}

TEST(Plot, CheckNamesTheMandatoryMembers)
{
    expectCheckNamesSpoiled<Plot>(samples::plot(), "Plot", {
        {"Name", [](Plot &p) { p.SetName(QString()); }},
        {"Name", [](Plot &p) { p.ResetName(); }},
        {"Type", [](Plot &p) { p.ResetType(); }},
        {"Type", [](Plot &p) { p.SetType(Plot::Type(4)); }},
        {"StartTime", [](Plot &p) { p.ResetStartTime(); }},
        {"StopTime", [](Plot &p) { p.ResetStopTime(); }},
    });
    // Optional members count only when set.
    Plot optional = samples::plot();
    optional.ResetSignal_ID();
    optional.ResetEmitter_ID();
    optional.ResetFrequencyList();
    EXPECT_NO_THROW(optional.Check());
}

TEST(Plot, CheckTakesTheMandatoryMembersInTableOrder)
{
    Plot p;
    p.SetValidate(false);
    p.SetType(Plot::Type(-1));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Plot: Please set Name properly.");
    p.SetName(QLatin1String(""));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Plot: Please set Type properly.");
    p.SetType(Plot::Type_Chirp);
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Plot: Please set StartTime properly.");
    p.SetStartTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Plot: Please set StopTime properly.");
    p.SetStopTime(samples::utc(2026, 1, 1, 0, 0, 1, 0));
    // The detail's own member comes after the plot's.
    p.GetDetail();
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Detail: Please set AnalogDemod properly.");
    p.GetDetail().SetAnalogDemod(PlotDetail::AnalogDemod_AM);
    EXPECT_NO_THROW(p.Check());
}

TEST(Plot, MandatoryChildrenMissingFailWritingWithValidationOn)
{
    Plot noDetail = samples::plot();
    noDetail.ResetDetail();
    EXPECT_FALSE(noDetail.HasData());
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW_MESSAGE(noDetail.GetXml(writer), IncompleteDefinitionException,
                         "Parameters for Detail are not set properly in 'Plot'.");
    EXPECT_TRUE(text.isEmpty());

    Plot noBandwidth = samples::plot();
    noBandwidth.ResetBandwidth();
    EXPECT_FALSE(noBandwidth.HasData());
    EXPECT_THROW_MESSAGE(noBandwidth.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Bandwidth are not set properly in 'Plot'.");

    // A detail without its demodulation is no complete detail.
    Plot emptyDetail = samples::plot();
    emptyDetail.SetDetail(PlotDetail());
    EXPECT_FALSE(emptyDetail.HasData());
    EXPECT_THROW(emptyDetail.GetXmlString(), IncompleteDefinitionException);
}

TEST(Plot, HasDataNeedsEveryMandatoryMemberAndAFilledBranch)
{
    EXPECT_TRUE(samples::plot().HasData());
    EXPECT_TRUE(samples::plotWithRadius().HasData());
    using Spoil = void (*)(Plot &);
    for (Spoil spoil : std::initializer_list<Spoil>{
             [](Plot &p) { p.ResetName(); }, [](Plot &p) { p.ResetBandwidth(); }, [](Plot &p) { p.ResetType(); },
             [](Plot &p) { p.ResetStartTime(); }, [](Plot &p) { p.ResetStopTime(); },
             [](Plot &p) { p.ResetDetail(); }, [](Plot &p) { p.SetEllipse(Ellipse()); }}) {
        Plot p = samples::plot();
        spoil(p);
        EXPECT_FALSE(p.HasData()) << p;
        EXPECT_TRUE(p.AnyData());
    }
    Plot fresh;
    EXPECT_FALSE(fresh.HasData());
    EXPECT_FALSE(fresh.AnyData());
    fresh.SetSignal_ID(1);
    EXPECT_TRUE(fresh.AnyData());
    EXPECT_FALSE(fresh.HasData());
}

TEST(Plot, ValidationOffWritesUnsetMandatoryMembersFromTheirSlots)
{
    Plot p;
    p.SetValidate(false);
    p.SetName(QStringLiteral("n"));
    EXPECT_EQ(compactXml(p), QStringLiteral("<Plot><Name>n</Name><Bandwidth>0.00</Bandwidth><Type></Type>"
                                            "<StartTime></StartTime><StopTime></StopTime>"
                                            "<Detail><AnalogDemod></AnalogDemod></Detail></Plot>"));
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagName, TagBandwidth, TagPlotType, TagStartTime, TagStopTime, TagPlotDetail}));
    // An enumerated value outside the list travels as a null array.
    EXPECT_EQ(valueOf(body, TagPlotType), be32(0xffffffffu));
}

TEST(Plot, RoundTripsInBothForms)
{
    const RoundTrip<Plot> ellipse = roundTrip(samples::plot());
    EXPECT_EQ(ellipse.fromXml.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_EQ(ellipse.fromBinary.GetChoicePlot(), Plot::ChoicePlot_Ellipse);
    EXPECT_EQ(std::as_const(ellipse.fromBinary).GetFrequencyList().GetValue().size(), 2);
    EXPECT_FALSE(std::as_const(ellipse.fromBinary).GetFrequencyList().GetValue().at(1).IsTimeStampSet());

    const RoundTrip<Plot> radius = roundTrip(radiusOnlyPlot());
    EXPECT_EQ(radius.fromXml.GetChoicePlot(), Plot::ChoicePlot_Radius);
    EXPECT_EQ(radius.fromBinary.GetRadius(), 750.25);
    EXPECT_FALSE(radius.fromXml.IsEllipseSet());

    // Only the written branch comes back: a plot that holds both branches
    // is read back without the one that was not selected, and so differs.
    const Plot both = samples::plotWithRadius();
    Plot fromXml;
    ASSERT_TRUE(fromXml.SetXmlString(both.GetXmlString()));
    EXPECT_FALSE(fromXml.IsEllipseSet());
    EXPECT_NE(fromXml, both);
    EXPECT_EQ(fromXml, radiusOnlyPlot());
    Plot fromBinary;
    QByteArray rep = both.GetBinaryRepresentationAsQByteArray();
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(rep));
    EXPECT_FALSE(fromBinary.IsEllipseSet());
    EXPECT_EQ(fromBinary, radiusOnlyPlot());

    for (int type = 0; type < 4; ++type) {
        Plot p = radiusOnlyPlot();
        p.SetType(Plot::Type(type));
        EXPECT_EQ(roundTrip(p).fromXml.GetType(), Plot::Type(type));
    }
}

TEST(Plot, CopiesAreIndependentAndEqualityReachesDeepMembers)
{
    const Plot original = samples::plot();
    Plot copy(original);
    EXPECT_EQ(copy, original);
    copy.GetFrequencyList().GetValue()[1].GetFrequency().SetValue(145550000.5);
    EXPECT_NE(copy, original);
    EXPECT_EQ(std::as_const(original).GetFrequencyList().GetValue().at(1).GetFrequency().GetValue(), 145550000.0);
    EXPECT_EQ(original, samples::plot());

    Plot assigned;
    assigned = original;
    EXPECT_EQ(assigned, original);
    assigned.GetDetail().SetAnalogDemod(PlotDetail::AnalogDemod_AM);
    EXPECT_NE(assigned, original);
    EXPECT_EQ(original.GetDetail().GetAnalogDemod(), PlotDetail::AnalogDemod_F3E);

    Plot ellipse = samples::plot();
    ellipse.GetEllipse().SetRotation(45.000001);
    EXPECT_NE(ellipse, original);

    // A radius set on one side only makes the plots differ.
    EXPECT_NE(samples::plotWithRadius(), original);
    Plot radius1 = samples::plotWithRadius();
    Plot radius2 = samples::plotWithRadius();
    EXPECT_EQ(radius1, radius2);
    radius2.SetRadius(750.26);
    EXPECT_NE(radius1, radius2);
    // Defaults do not count.
    radius1.SetDefaultName(QStringLiteral("other"));
    radius2.SetRadius(750.25);
    EXPECT_EQ(radius1, radius2);
}

TEST(Plot, UnknownElementsAndBadValuesInXml)
{
    const QString document = compactXml(samples::plot());
    Plot extra;
    ASSERT_TRUE(extra.SetXmlString(QString(document).replace(
        QStringLiteral("<Type>"), QStringLiteral("<Extra><Name>ignored</Name><Type>Chirp</Type></Extra><Type>"))));
    EXPECT_EQ(extra, samples::plot());

    Plot numbers;
    ASSERT_TRUE(numbers.SetXmlString(
        QString(compactXml(samples::plotWithRadius()))
            .replace(QStringLiteral("<Radius>750.25</Radius>"), QStringLiteral("<Radius>wide</Radius>"))
            .replace(QStringLiteral("<Signal_ID>4711</Signal_ID>"), QStringLiteral("<Signal_ID>many</Signal_ID>"))));
    EXPECT_TRUE(numbers.IsRadiusSet());
    EXPECT_EQ(numbers.GetRadius(), 0.0);
    EXPECT_TRUE(numbers.IsSignal_IDSet());
    EXPECT_EQ(numbers.GetSignal_ID(), 0);

    Plot dates;
    ASSERT_TRUE(dates.SetXmlString(QString(document).replace(plotStart, QStringLiteral("yesterday"))));
    EXPECT_TRUE(dates.IsStartTimeSet());
    EXPECT_FALSE(dates.GetStartTime().isValid());
    EXPECT_EQ(dates.GetStopTime(), samples::utc(2026, 11, 23, 9, 0, 0, 1));
}

TEST(Plot, BrokenXmlKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::plot(), samples::plotWithRadius());
    // A failure of the record itself keeps it as well.
    const QString badType = QString(compactXml(samples::plot()))
                                .replace(QStringLiteral("<Type>Hopper</Type>"), QStringLiteral("<Type>Spread</Type>"));
    Plot kept = samples::plotWithRadius();
    EXPECT_FALSE(kept.SetXmlString(badType));
    EXPECT_TRUE(keeps(samples::plotWithRadius(), kept));
    EXPECT_THROW_MESSAGE(kept.SetXmlString(badType, true), OutOfRangeException,
                         "enum is not valid (classname=Plot,membername=m_type)");
    EXPECT_TRUE(keeps(samples::plotWithRadius(), kept));
}

TEST(Plot, ReadingHalfwayKeepsWhatWasRead)
{
    Plot p;
    testsupport::XmlReader xml(QStringLiteral("<Plot><Name>first</Name><Signal_ID>5</Signal_ID>"
                                              "<Type>Spread</Type><StartTime>2026-11-23T08:00:00,000Z</StartTime></Plot>"));
    EXPECT_THROW_MESSAGE(p.ProcessXml(xml.reader), OutOfRangeException,
                         "enum is not valid (classname=Plot,membername=m_type)");
    EXPECT_EQ(p.GetName(), QStringLiteral("first"));
    EXPECT_EQ(p.GetSignal_ID(), 5);
    EXPECT_FALSE(p.IsTypeSet());
    EXPECT_FALSE(p.IsStartTimeSet());
}

TEST(Plot, BadBinaryKeepsTheRecord)
{
    expectBadBinaryKeepsRecord(samples::plot(), samples::plotWithRadius());
    expectBadBinaryKeepsRecord(samples::plotWithRadius(), samples::plot());

    // Members read before the length error stay in a record read directly.
    const QByteArray body = nestedBody(samples::plot());
    testsupport::BinaryReader reader(body);
    Plot direct;
    EXPECT_THROW_MESSAGE(direct.SetBinary(reader.stream, body.size() + 1), BinaryParsingException,
                         QStringLiteral("Plot") + lengthErrorTail);
    EXPECT_EQ(direct.GetName(), QStringLiteral("Hopper 1"));
    EXPECT_EQ(direct.GetDetail(), samples::plotDetail());
}

TEST(Plot, UnreadableNumbersAndDatesInBinary)
{
    Plot p;
    p.SetValidate(false);
    QByteArray rep = representation(Plot::GetId(), frame(TagRadius, utf8Value(QStringLiteral("far")))
                                                       + frame(TagStartTime, utf8Value(QStringLiteral("soon")))
                                                       + frame(0x01020304u, QByteArray("\x00\x01", 2))
                                                       + frame(TagName, utf8Value(QStringLiteral("after"))));
    ASSERT_TRUE(p.SetBinaryRepresentation(rep));
    EXPECT_TRUE(p.IsRadiusSet());
    EXPECT_EQ(p.GetRadius(), 0.0);
    EXPECT_TRUE(p.IsStartTimeSet());
    EXPECT_FALSE(p.GetStartTime().isValid());
    EXPECT_EQ(p.GetName(), QStringLiteral("after"));

    // An unknown type name is refused with validation on and stored invalid without.
    QByteArray badType = representation(Plot::GetId(), frame(TagPlotType, utf8Value(QStringLiteral("Spread"))));
    Plot strict = samples::plot();
    EXPECT_FALSE(strict.SetBinaryRepresentation(badType));
    EXPECT_EQ(strict, samples::plot());
    Plot lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetBinaryRepresentation(badType));
    EXPECT_TRUE(lax.IsTypeSet());
    EXPECT_EQ(int(lax.GetType()), -1);
}

// --- PlotDetail -----------------------------------------------------------------------------

TEST(PlotDetail, AnalogDemodNamesWalkBothWays)
{
    checkEnumeration({"AM",  "FM",  "CW",  "PULSE", "LSB", "USB", "ISB", "TV",   "PM",   "IQ",
                      "LOG", "A1",  "A1A", "A3E",   "B7B", "B8E", "F1B", "F1C",  "F3C",  "F3E",
                      "F7B", "J3E", "J7B", "FSK",   "AFSK", "FAX1", "FAX2", "WBP", "UNKNOWN"},
                     &PlotDetail::GetAnalogDemods, &PlotDetail::GetGUIAnalogDemods, &PlotDetail::AnalogDemodToName,
                     &PlotDetail::NameToAnalogDemod, &PlotDetail::IsValidAnalogDemod);
    EXPECT_EQ(PlotDetail::GetAnalogDemods().size(), 29);
    EXPECT_EQ(int(PlotDetail::AnalogDemod_F3E), 19);
    EXPECT_EQ(int(PlotDetail::AnalogDemod_UNKNOWN), 28);
}

TEST(PlotDetail, SetAnalogDemodRefusesValuesOutsideTheTable)
{
    PlotDetail d = samples::plotDetail();
    for (int bad : {-1, 29, 1000}) {
        EXPECT_THROW_MESSAGE(d.SetAnalogDemod(PlotDetail::AnalogDemod(bad)), OutOfRangeException,
                             "enum is not valid (classname=PlotDetail,membername=m_analogDemod)");
        EXPECT_EQ(d.GetAnalogDemod(), PlotDetail::AnalogDemod_F3E);
    }
    EXPECT_EQ(d, samples::plotDetail());
    d.SetValidate(false);
    d.SetAnalogDemod(PlotDetail::AnalogDemod(29));
    EXPECT_TRUE(d.IsAnalogDemodSet());
    EXPECT_EQ(int(d.GetAnalogDemod()), 29);
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set AnalogDemod properly.");
}

TEST(PlotDetail, UnknownAnalogDemodNameReadFromXml)
{
    const PlotDetail read = readUnknownEnumName(
        QStringLiteral("<Detail><Comment>c</Comment><AnalogDemod>f3e</AnalogDemod></Detail>"),
        QStringLiteral("enum is not valid (classname=PlotDetail,membername=m_analogDemod)"), &PlotDetail::IsAnalogDemodSet,
        &PlotDetail::GetAnalogDemod);
    EXPECT_EQ(read.GetComment(), QStringLiteral("c"));
}

TEST(PlotDetail, WritesCommentThenAnalogDemod)
{
    const PlotDetail d = samples::plotDetail();
    EXPECT_EQ(compactXml(d), QStringLiteral("<Detail><Comment>hopping over three channels</Comment>"
                                            "<AnalogDemod>F3E</AnalogDemod></Detail>"));
    const QByteArray body = bodyOf(d.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagComment, TagAnalogDemod}));
    EXPECT_EQ(valueOf(body, TagComment), utf8Value(QStringLiteral("hopping over three channels")));
    EXPECT_EQ(valueOf(body, TagAnalogDemod), utf8Value(QStringLiteral("F3E")));
    roundTrip(d);

    PlotDetail onlyDemod;
    onlyDemod.SetAnalogDemod(PlotDetail::AnalogDemod_UNKNOWN);
    EXPECT_EQ(compactXml(onlyDemod), QStringLiteral("<Detail><AnalogDemod>UNKNOWN</AnalogDemod></Detail>"));
    roundTrip(onlyDemod);
    PlotDetail emptyComment = onlyDemod;
    emptyComment.SetComment(QLatin1String(""));
    EXPECT_EQ(compactXml(emptyComment),
              QStringLiteral("<Detail><Comment></Comment><AnalogDemod>UNKNOWN</AnalogDemod></Detail>"));
    const RoundTrip<PlotDetail> trip = roundTrip(emptyComment);
    EXPECT_TRUE(trip.fromXml.IsCommentSet());
    EXPECT_FALSE(trip.fromBinary.GetComment().isNull());
}

TEST(PlotDetail, CommentRefusesANullStringAndCheckNamesBothMembers)
{
    PlotDetail d;
    EXPECT_THROW_MESSAGE(d.SetComment(QString()), OutOfRangeException, "Detail: Please set Comment properly.");
    EXPECT_FALSE(d.IsCommentSet());
    EXPECT_FALSE(d.HasData());
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set AnalogDemod properly.");
    expectCheckNamesSpoiled<PlotDetail>(samples::plotDetail(), "Detail", {
        {"Comment", [](PlotDetail &p) { p.SetComment(QString()); }},
        {"AnalogDemod", [](PlotDetail &p) { p.ResetAnalogDemod(); }},
    });
    // The comment is checked first.
    PlotDetail both;
    both.SetValidate(false);
    both.SetComment(QString());
    EXPECT_THROW_MESSAGE(both.Check(), OutOfRangeException, "Detail: Please set Comment properly.");
}

TEST(PlotDetail, CopiesAndBadInput)
{
    PlotDetail copy = samples::plotDetail();
    copy.SetComment(QStringLiteral("changed"));
    EXPECT_NE(copy, samples::plotDetail());
    PlotDetail start;
    start.SetAnalogDemod(PlotDetail::AnalogDemod_AM);
    expectBrokenXmlKeepsRecord(samples::plotDetail(), start);
    expectBadBinaryKeepsRecord(samples::plotDetail(), start);
}

// --- FrequencyList and Value ----------------------------------------------------------------

TEST(FrequencyList, EmptyListWritesCountZeroInBinaryAndNoItemInXml)
{
    FrequencyList list;
    list.GetValue();
    EXPECT_TRUE(list.IsValueSet());
    EXPECT_TRUE(list.HasData());
    EXPECT_EQ(compactXml(list), QStringLiteral("<FrequencyList/>"));
    const QByteArray body = bodyOf(list.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(body, frame(TagFrequencyListValue, be32(0)));
    roundTrip(list);

    // Inside a plot as well.
    Plot p = samples::plot();
    p.SetFrequencyList(FrequencyList());
    p.GetFrequencyList();
    EXPECT_TRUE(compactXml(p).contains(QStringLiteral("<FrequencyList/>")));
    EXPECT_EQ(valueOf(bodyOf(p.GetBinaryRepresentationAsQByteArray()), TagFrequencyList),
              frame(TagFrequencyListValue, be32(0)));
}

TEST(FrequencyList, ItemsAreCountedAndFramedWithoutTheirId)
{
    const Plot p = samples::plot();
    const FrequencyList &list = p.GetFrequencyList();
    const QByteArray body = bodyOf(list.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), QVector<quint32>{TagFrequencyListValue});
    EXPECT_EQ(valueOf(body, TagFrequencyListValue), itemsValue(list.GetValue()));
    EXPECT_EQ(readBe32(valueOf(body, TagFrequencyListValue), 0), 2u);
    EXPECT_EQ(compactXml(list),
              QStringLiteral("<FrequencyList><Value><Frequency>145525000.00</Frequency>"
                             "<TimeStamp>2026-11-23T08:00:00,000Z</TimeStamp></Value>"
                             "<Value><Frequency>145550000.00</Frequency></Value></FrequencyList>"));
    const RoundTrip<FrequencyList> trip = roundTrip(list);
    EXPECT_EQ(std::as_const(trip.fromXml).GetValue().size(), 2);
}

TEST(FrequencyList, AppendRefusesAnIncompleteValue)
{
    FrequencyList list;
    Value incomplete;
    incomplete.SetTimeStamp(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_THROW_MESSAGE(list.AppendValue(incomplete), IncompleteDefinitionException,
                         "FrequencyList: Tried to append not completely defined or invalid item Value.");
    EXPECT_TRUE(std::as_const(list).GetValue().isEmpty());
    EXPECT_FALSE(list.IsValueSet());
    // A frequency without its value is no complete item either.
    Value noValue;
    noValue.GetFrequency().SetMin(1.0);
    EXPECT_THROW_MESSAGE(list.AppendValue(noValue), IncompleteDefinitionException,
                         "FrequencyList: Tried to append not completely defined or invalid item Value.");

    list.SetValidate(false);
    list.AppendValue(incomplete);
    list.AppendValue(Value());
    EXPECT_EQ(std::as_const(list).GetValue().size(), 2);
    EXPECT_TRUE(list.IsValueSet());
}

TEST(FrequencyList, IncompleteItemFailsWritingWithValidationOn)
{
    FrequencyList list;
    list.SetValidate(false);
    Value incomplete;
    incomplete.SetTimeStamp(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    list.AppendValue(samples::frequencyValue(1.0, QDateTime()));
    list.AppendValue(incomplete);
    // Without validation the incomplete item is written as it is.
    EXPECT_EQ(compactXml(list), QStringLiteral("<FrequencyList><Value><Frequency>1.00</Frequency></Value>"
                                               "<Value><Frequency>0.00</Frequency>"
                                               "<TimeStamp>2026-01-01T00:00:00,000Z</TimeStamp></Value>"
                                               "</FrequencyList>"));
    list.SetValidate(true);
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW(list.GetXml(writer), IncompleteDefinitionException);
    EXPECT_TRUE(text.isEmpty());
}

TEST(FrequencyList, CopiesAreIndependent)
{
    const FrequencyList original = samples::plot().GetFrequencyList();
    FrequencyList copy = original;
    copy.GetValue()[0].SetTimeStamp(samples::utc(2026, 11, 23, 8, 0, 0, 1));
    EXPECT_NE(copy, original);
    FrequencyList shorter = original;
    shorter.GetValue().removeLast();
    EXPECT_NE(shorter, original);
    FrequencyList swapped;
    swapped.AppendValue(std::as_const(original).GetValue().at(1));
    swapped.AppendValue(std::as_const(original).GetValue().at(0));
    EXPECT_NE(swapped, original);
    EXPECT_EQ(std::as_const(original).GetValue().size(), 2);
}

TEST(FrequencyList, BadInputKeepsTheRecord)
{
    FrequencyList start;
    start.AppendValue(samples::frequencyValue(5.0, QDateTime()));
    const FrequencyList list = samples::plot().GetFrequencyList();
    expectBrokenXmlKeepsRecord(list, start);
    expectBadBinaryKeepsRecord(list, start);

    // A count larger than the items that follow.
    QByteArray body = frame(TagFrequencyListValue, be32(3) + valueOf(nestedBody(list), TagFrequencyListValue).mid(4));
    QByteArray rep = representation(FrequencyList::GetId(), body);
    FrequencyList kept = start;
    EXPECT_FALSE(kept.SetBinaryRepresentation(rep));
    EXPECT_TRUE(keeps(start, kept));
}

TEST(FrequencyListValue, WritesFrequencyThenTimeStamp)
{
    const Value v = samples::frequencyValue(145525000.0, samples::utc(2026, 11, 23, 8, 0, 0, 0));
    EXPECT_EQ(compactXml(v), QStringLiteral("<Value><Frequency>145525000.00</Frequency>"
                                            "<TimeStamp>2026-11-23T08:00:00,000Z</TimeStamp></Value>"));
    const QByteArray body = bodyOf(v.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagFrequency, TagTimeStamp}));
    EXPECT_EQ(valueOf(body, TagFrequency), nestedBody(samples::valueRecord<Frequency>(145525000.0)));
    EXPECT_EQ(valueOf(body, TagTimeStamp), utf8Value(timeText(samples::utc(2026, 11, 23, 8, 0, 0, 0))));
    roundTrip(v);

    Value full;
    full.SetFrequency(samples::frequency());
    EXPECT_EQ(compactXml(full), QStringLiteral("<Value>") + compactXml(samples::frequency()) + QStringLiteral("</Value>"));
    EXPECT_EQ(tagsOf(bodyOf(full.GetBinaryRepresentationAsQByteArray())), QVector<quint32>{TagFrequency});
    roundTrip(full);
}

TEST(FrequencyListValue, FrequencyIsMandatory)
{
    Value v;
    v.SetTimeStamp(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_TRUE(v.AnyData());
    EXPECT_FALSE(v.HasData());
    EXPECT_THROW_MESSAGE(v.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'Value'.");
    v.SetFrequency(samples::valueRecord<Frequency>(1.0));
    EXPECT_TRUE(v.HasData());
    EXPECT_NO_THROW(v.Check());
}

TEST(FrequencyListValue, BadInputKeepsTheRecord)
{
    const Value written = samples::frequencyValue(145525000.0, samples::utc(2026, 11, 23, 8, 0, 0, 0));
    const Value start = samples::frequencyValue(1.0, QDateTime());
    expectBrokenXmlKeepsRecord(written, start);
    expectBadBinaryKeepsRecord(written, start);

    Value dates;
    ASSERT_TRUE(dates.SetXmlString(QStringLiteral("<Value><Frequency>abc</Frequency><TimeStamp>23.11.2026</TimeStamp>"
                                                  "<Unknown>1</Unknown></Value>")));
    EXPECT_EQ(dates.GetFrequency().GetValue(), 0.0);
    EXPECT_TRUE(dates.IsTimeStampSet());
    EXPECT_FALSE(dates.GetTimeStamp().isValid());
}

// --- Plot_Info ------------------------------------------------------------------------------

TEST(PlotInfo, IdsAndElementNames)
{
    EXPECT_EQ(Plot_Info::GetId(), qint64(0xffffffff89c4e60aull));
    EXPECT_EQ(Emissions::GetId(), qint64(0x1ee85d9f));
    EXPECT_EQ(Emission::GetId(), qint64(0xffffffffdeb900b5ull));
    EXPECT_EQ(Bursts::GetId(), qint64(0x6dbc1c29));
    EXPECT_EQ(Burst::GetId(), qint64(0x53ee67d5));
    EXPECT_EQ(Plot_Info().GetObjectName(), QStringLiteral("Plot_Info"));
    EXPECT_EQ(Emissions().GetObjectName(), QStringLiteral("Emissions"));
    EXPECT_EQ(Emission().GetObjectName(), QStringLiteral("Emission"));
    EXPECT_EQ(Bursts().GetObjectName(), QStringLiteral("Bursts"));
    EXPECT_EQ(Burst().GetObjectName(), QStringLiteral("Burst"));
}

TEST(PlotInfo, KvfClIdKeepsItsHyphenatedElementNameAndTravelsRaw)
{
    const Plot_Info info = samples::plotInfo();
    const QString xml = compactXml(info);
    EXPECT_TRUE(xml.startsWith(QStringLiteral("<Plot_Info><KVF-CL-ID>-7</KVF-CL-ID><Emissions><Count>1</Count><Emission>")));
    EXPECT_TRUE(xml.endsWith(QStringLiteral("</Emission></Emissions></Plot_Info>")));
    EXPECT_EQ(xml, QStringLiteral("<Plot_Info><KVF-CL-ID>-7</KVF-CL-ID>") + compactXml(info.GetEmissions())
                       + QStringLiteral("</Plot_Info>"));
    const QByteArray body = bodyOf(info.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagKVFCLID, TagEmissions}));
    EXPECT_EQ(valueOf(body, TagKVFCLID), be32(quint32(-7)));
    EXPECT_EQ(valueOf(body, TagEmissions), nestedBody(info.GetEmissions()));

    // The stem's spelling is no element of the record.
    Plot_Info read;
    ASSERT_TRUE(read.SetXmlString(QString(xml).replace(QStringLiteral("KVF-CL-ID"), QStringLiteral("KVF_CL_ID"))));
    EXPECT_FALSE(read.IsKVF_CL_IDSet());
    EXPECT_EQ(read.GetEmissions(), info.GetEmissions());
}

TEST(PlotInfo, RoundTripsInBothForms)
{
    const RoundTrip<Plot_Info> trip = roundTrip(samples::plotInfo());
    EXPECT_EQ(trip.fromXml.GetKVF_CL_ID(), -7);
    EXPECT_EQ(trip.fromBinary.GetKVF_CL_ID(), -7);
    Plot_Info withoutId = samples::plotInfo();
    withoutId.ResetKVF_CL_ID();
    EXPECT_TRUE(withoutId.HasData());
    EXPECT_FALSE(compactXml(withoutId).contains(QStringLiteral("KVF")));
    EXPECT_EQ(tagsOf(bodyOf(withoutId.GetBinaryRepresentationAsQByteArray())), QVector<quint32>{TagEmissions});
    roundTrip(withoutId);
}

TEST(PlotInfo, EmissionsAreMandatory)
{
    Plot_Info info;
    info.SetKVF_CL_ID(3);
    EXPECT_TRUE(info.AnyData());
    EXPECT_FALSE(info.HasData());
    EXPECT_THROW_MESSAGE(info.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Emissions are not set properly in 'Plot_Info'.");
    info.SetValidate(false);
    EXPECT_EQ(compactXml(info),
              QStringLiteral("<Plot_Info><KVF-CL-ID>3</KVF-CL-ID><Emissions><Count>0</Count></Emissions></Plot_Info>"));
}

TEST(PlotInfo, DeepDifferencesAndIndependentCopies)
{
    const Plot_Info original = samples::plotInfo();
    Plot_Info copy = original;
    EXPECT_EQ(copy, original);
    copy.GetEmissions().GetEmission()[0].GetBursts().GetBurst()[1].SetLevel(-61.7500001);
    EXPECT_NE(copy, original);
    EXPECT_EQ(std::as_const(original).GetEmissions().GetEmission().at(0).GetBursts().GetBurst().at(1).GetLevel(), -61.75);
    EXPECT_EQ(original, samples::plotInfo());

    Plot_Info assigned;
    assigned = original;
    assigned.GetEmissions().GetEmission()[0].GetBursts().GetBurst()[0].GetFrequency().SetUse(true);
    EXPECT_NE(assigned, original);
}

TEST(PlotInfo, BadInputKeepsTheRecord)
{
    Plot_Info start;
    start.SetValidate(false);
    start.SetKVF_CL_ID(99);
    expectBrokenXmlKeepsRecord(samples::plotInfo(), start);
    expectBadBinaryKeepsRecord(samples::plotInfo(), start);

    Plot_Info unreadable;
    ASSERT_TRUE(unreadable.SetXmlString(
        QString(compactXml(samples::plotInfo())).replace(QStringLiteral(">-7<"), QStringLiteral(">seven<"))));
    EXPECT_TRUE(unreadable.IsKVF_CL_IDSet());
    EXPECT_EQ(unreadable.GetKVF_CL_ID(), 0);
}

// --- Emissions ------------------------------------------------------------------------------

TEST(Emissions, CountIsMandatoryAndStoredAsGiven)
{
    Emissions e;
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emissions: Please set Count properly.");
    e.AppendEmission(samples::emission());
    EXPECT_FALSE(e.HasData());
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emissions: Please set Count properly.");
    e.SetCount(5);
    EXPECT_TRUE(e.HasData());
    const RoundTrip<Emissions> trip = roundTrip(e);
    EXPECT_EQ(trip.fromXml.GetCount(), 5);
    EXPECT_EQ(trip.fromBinary.GetCount(), 5);
    EXPECT_EQ(std::as_const(trip.fromBinary).GetEmission().size(), 1);
    expectCheckNamesSpoiled<Emissions>(e, "Emissions", {
        {"Count", [](Emissions &x) { x.ResetCount(); }},
    });
}

TEST(Emissions, WritesCountThenItems)
{
    const Emissions e = samples::plotInfo().GetEmissions();
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagCount, TagEmission}));
    EXPECT_EQ(valueOf(body, TagCount), be32(1));
    EXPECT_EQ(valueOf(body, TagEmission), itemsValue(e.GetEmission()));
    EXPECT_EQ(compactXml(e), QStringLiteral("<Emissions><Count>1</Count>") + compactXml(samples::emission())
                                 + QStringLiteral("</Emissions>"));
}

TEST(Emissions, EmptyVectorWritesCountZeroInBinaryAndNothingInXml)
{
    Emissions e;
    e.SetCount(0);
    EXPECT_TRUE(e.HasData());
    EXPECT_EQ(compactXml(e), QStringLiteral("<Emissions><Count>0</Count></Emissions>"));
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(body, frame(TagCount, be32(0)) + frame(TagEmission, be32(0)));
    roundTrip(e);
    Emissions negative;
    negative.SetCount(-2);
    EXPECT_EQ(valueOf(bodyOf(negative.GetBinaryRepresentationAsQByteArray()), TagCount), be32(quint32(-2)));
    EXPECT_EQ(roundTrip(negative).fromBinary.GetCount(), -2);
}

TEST(Emissions, AppendRefusesAnIncompleteEmission)
{
    Emissions e;
    e.SetCount(1);
    Emission incomplete = minimalEmission();
    incomplete.ResetLevel();
    EXPECT_THROW_MESSAGE(e.AppendEmission(incomplete), IncompleteDefinitionException,
                         "Emissions: Tried to append not completely defined or invalid item Emission.");
    EXPECT_TRUE(std::as_const(e).GetEmission().isEmpty());
    EXPECT_FALSE(e.IsEmissionSet());
    e.SetValidate(false);
    e.AppendEmission(incomplete);
    e.AppendEmission(Emission());
    EXPECT_EQ(std::as_const(e).GetEmission().size(), 2);
    // Written with validation on, Check refuses the first incomplete item.
    e.SetValidate(true);
    EXPECT_THROW_MESSAGE(e.GetXmlString(), OutOfRangeException, "Emission: Please set Level properly.");
}

TEST(Emissions, BadInputKeepsTheRecord)
{
    Emissions start;
    start.SetCount(42);
    start.AppendEmission(minimalEmission());
    expectBrokenXmlKeepsRecord(samples::plotInfo().GetEmissions(), start);
    expectBadBinaryKeepsRecord(samples::plotInfo().GetEmissions(), start);

    // An item without its Level is refused with validation on. (Written
    // without validation the level would travel as 0.00, so the document and
    // the binary body leave it out by hand.)
    const QString document = QStringLiteral("<Emissions><Count>2</Count>") + compactXml(minimalEmission())
        + QString(compactXml(minimalEmission())).replace(QStringLiteral("<Level>-80.00</Level>"), QString())
        + QStringLiteral("</Emissions>");
    ASSERT_EQ(document.count(QStringLiteral("<Level>")), 1);
    QByteArray noLevel;
    for (const Frame &f : splitFrames(nestedBody(minimalEmission()))) {
        if (f.tag != TagLevel)
            noLevel += frame(f.tag, f.value);
    }
    const QByteArray complete = nestedBody(minimalEmission());
    QByteArray rep = representation(
        Emissions::GetId(), frame(TagCount, be32(2))
                                + frame(TagEmission, be32(2) + be32(quint32(complete.size())) + complete
                                                           + be32(quint32(noLevel.size())) + noLevel));
    Emissions strict = start;
    EXPECT_FALSE(strict.SetXmlString(document));
    EXPECT_TRUE(keeps(start, strict));
    EXPECT_THROW_MESSAGE(strict.SetXmlString(document, true), IncompleteDefinitionException,
                         "Emissions: Tried to append not completely defined or invalid item Emission.");
    EXPECT_FALSE(strict.SetBinaryRepresentation(rep));
    EXPECT_TRUE(keeps(start, strict));
    Emissions tolerant;
    tolerant.SetValidate(false);
    ASSERT_TRUE(tolerant.SetBinaryRepresentation(rep));
    EXPECT_EQ(std::as_const(tolerant).GetEmission().size(), 2);
}

// --- Emission -------------------------------------------------------------------------------

TEST(Emission, WritesItsMembersInTableOrderWithTwoDecimals)
{
    const Emission e = samples::emission();
    EXPECT_EQ(compactXml(e),
              QStringLiteral("<Emission><Azimuth>271.50</Azimuth><AzimuthVar>2.25</AzimuthVar>"
                             "<Elevation>3.50</Elevation><ElevationVar>0.25</ElevationVar><Level>-64.50</Level>"
                             "<StartTime>2026-11-23T08:30:00,000Z</StartTime><StopTime>2026-11-23T08:31:00,000Z</StopTime>")
                  + compactXml(samples::bursts()) + QStringLiteral("</Emission>"));
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagAzimuth, TagAzimuthVar, TagElevation, TagElevationVar, TagLevel,
                                              TagStartTime, TagStopTime, TagBursts}));
    EXPECT_EQ(valueOf(body, TagAzimuth), utf8Value(QStringLiteral("271.50")));
    EXPECT_EQ(valueOf(body, TagAzimuthVar), utf8Value(QStringLiteral("2.25")));
    EXPECT_EQ(valueOf(body, TagElevation), utf8Value(QStringLiteral("3.50")));
    EXPECT_EQ(valueOf(body, TagElevationVar), utf8Value(QStringLiteral("0.25")));
    EXPECT_EQ(valueOf(body, TagLevel), utf8Value(QStringLiteral("-64.50")));
    EXPECT_EQ(valueOf(body, TagStartTime), utf8Value(timeText(samples::utc(2026, 11, 23, 8, 30, 0, 0))));
    EXPECT_EQ(valueOf(body, TagBursts), nestedBody(samples::bursts()));
}

TEST(Emission, OptionalMembersAreWrittenOnlyWhenSet)
{
    const Emission e = minimalEmission();
    EXPECT_TRUE(e.HasData());
    EXPECT_EQ(compactXml(e), QStringLiteral("<Emission><Azimuth>10.00</Azimuth><AzimuthVar>0.50</AzimuthVar>"
                                            "<Level>-80.00</Level><StartTime>2026-02-01T00:00:00,000Z</StartTime>"
                                            "<StopTime>2026-02-01T00:01:00,000Z</StopTime></Emission>"));
    EXPECT_EQ(tagsOf(bodyOf(e.GetBinaryRepresentationAsQByteArray())),
              (QVector<quint32>{TagAzimuth, TagAzimuthVar, TagLevel, TagStartTime, TagStopTime}));
    const RoundTrip<Emission> trip = roundTrip(e);
    EXPECT_FALSE(trip.fromXml.IsElevationSet());
    EXPECT_FALSE(trip.fromBinary.IsBurstsSet());
}

TEST(Emission, CheckNamesTheMandatoryMembersInTableOrder)
{
    expectCheckNamesSpoiled<Emission>(samples::emission(), "Emission", {
        {"Azimuth", [](Emission &e) { e.ResetAzimuth(); }},
        {"AzimuthVar", [](Emission &e) { e.ResetAzimuthVar(); }},
        {"Level", [](Emission &e) { e.ResetLevel(); }},
        {"StartTime", [](Emission &e) { e.ResetStartTime(); }},
        {"StopTime", [](Emission &e) { e.ResetStopTime(); }},
    });
    Emission e;
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emission: Please set Azimuth properly.");
    e.SetAzimuth(1.0);
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emission: Please set AzimuthVar properly.");
    e.SetAzimuthVar(1.0);
    e.SetElevation(1.0);
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emission: Please set Level properly.");
    e.SetLevel(1.0);
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emission: Please set StartTime properly.");
    e.SetStartTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Emission: Please set StopTime properly.");
    e.SetStopTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_NO_THROW(e.Check());
    EXPECT_TRUE(e.HasData());
    // The bursts' own Count is checked when they are set.
    e.GetBursts();
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Bursts: Please set Count properly.");
}

TEST(Emission, HasDataNeedsTheFiveMandatoryMembers)
{
    using Spoil = void (*)(Emission &);
    for (Spoil spoil : std::initializer_list<Spoil>{
             [](Emission &e) { e.ResetAzimuth(); }, [](Emission &e) { e.ResetAzimuthVar(); },
             [](Emission &e) { e.ResetLevel(); }, [](Emission &e) { e.ResetStartTime(); },
             [](Emission &e) { e.ResetStopTime(); }}) {
        Emission e = samples::emission();
        spoil(e);
        EXPECT_FALSE(e.HasData()) << e;
        EXPECT_TRUE(e.AnyData());
    }
    Emission optionalOnly;
    optionalOnly.SetElevation(1.0);
    EXPECT_TRUE(optionalOnly.AnyData());
    EXPECT_FALSE(optionalOnly.HasData());
}

TEST(Emission, CopiesRoundTripsAndBadInput)
{
    const RoundTrip<Emission> trip = roundTrip(samples::emission());
    EXPECT_EQ(std::as_const(trip.fromBinary).GetBursts().GetBurst().size(), 2);
    Emission copy = samples::emission();
    copy.SetElevationVar(0.26);
    EXPECT_NE(copy, samples::emission());
    Emission unsetElevation = samples::emission();
    unsetElevation.ResetElevation();
    EXPECT_NE(unsetElevation, samples::emission());

    expectBrokenXmlKeepsRecord(samples::emission(), minimalEmission());
    expectBadBinaryKeepsRecord(samples::emission(), minimalEmission());

    Emission numbers;
    numbers.SetValidate(false);
    ASSERT_TRUE(numbers.SetXmlString(QStringLiteral("<Emission><Azimuth>north</Azimuth><Level>1e3</Level>"
                                                    "<StartTime>08:30</StartTime><Noise>x</Noise></Emission>")));
    EXPECT_TRUE(numbers.IsAzimuthSet());
    EXPECT_EQ(numbers.GetAzimuth(), 0.0);
    EXPECT_EQ(numbers.GetLevel(), 1000.0);
    EXPECT_TRUE(numbers.IsStartTimeSet());
    EXPECT_FALSE(numbers.GetStartTime().isValid());
}

// --- Bursts ---------------------------------------------------------------------------------

TEST(Bursts, WritesCountThenItems)
{
    const Bursts b = samples::bursts();
    EXPECT_EQ(compactXml(b), QStringLiteral("<Bursts><Count>2</Count>") + compactXml(samples::burst())
                                 + compactXml(samples::burst(-12.5)) + QStringLiteral("</Bursts>"));
    const QByteArray body = bodyOf(b.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagCount, TagBurst}));
    EXPECT_EQ(valueOf(body, TagCount), be32(2));
    EXPECT_EQ(valueOf(body, TagBurst), itemsValue(b.GetBurst()));
    const RoundTrip<Bursts> trip = roundTrip(b);
    EXPECT_EQ(std::as_const(trip.fromXml).GetBurst().at(1).GetAzimuth(), -12.5);
}

TEST(Bursts, EmptyVectorWritesCountZeroInBinaryAndNothingInXml)
{
    Bursts b;
    b.SetCount(0);
    b.GetBurst();
    EXPECT_EQ(compactXml(b), QStringLiteral("<Bursts><Count>0</Count></Bursts>"));
    EXPECT_EQ(bodyOf(b.GetBinaryRepresentationAsQByteArray()), frame(TagCount, be32(0)) + frame(TagBurst, be32(0)));
    roundTrip(b);
    // The count is not taken from the list.
    Bursts more;
    more.SetCount(7);
    more.AppendBurst(minimalBurst());
    EXPECT_EQ(roundTrip(more).fromBinary.GetCount(), 7);
}

TEST(Bursts, CountIsMandatoryAndAppendRefusesAnIncompleteBurst)
{
    Bursts b;
    b.AppendBurst(minimalBurst());
    EXPECT_FALSE(b.HasData());
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Bursts: Please set Count properly.");
    b.SetCount(1);
    EXPECT_NO_THROW(b.Check());
    Burst incomplete = minimalBurst();
    incomplete.ResetQuality();
    EXPECT_THROW_MESSAGE(b.AppendBurst(incomplete), IncompleteDefinitionException,
                         "Bursts: Tried to append not completely defined or invalid item Burst.");
    EXPECT_EQ(std::as_const(b).GetBurst().size(), 1);
    b.SetValidate(false);
    b.AppendBurst(incomplete);
    EXPECT_EQ(std::as_const(b).GetBurst().size(), 2);
}

TEST(Bursts, BadInputKeepsTheRecord)
{
    Bursts start;
    start.SetCount(1);
    start.AppendBurst(minimalBurst());
    expectBrokenXmlKeepsRecord(samples::bursts(), start);
    expectBadBinaryKeepsRecord(samples::bursts(), start);
}

// --- Burst ----------------------------------------------------------------------------------

TEST(Burst, WritesItsMembersInTableOrder)
{
    const Burst b = samples::burst();
    EXPECT_EQ(compactXml(b),
              QStringLiteral("<Burst>") + compactXml(samples::frequency()) + compactXml(samples::bandwidth())
                  + QStringLiteral("<Quality>87.50</Quality><Azimuth>271.25</Azimuth><AzimuthVar>1.50</AzimuthVar>"
                                   "<Elevation>4.25</Elevation><ElevationVar>0.50</ElevationVar><Level>-61.75</Level>"
                                   "<StartTime>2026-11-23T08:30:00,125Z</StartTime>"
                                   "<StopTime>2026-11-23T08:30:00,900Z</StopTime></Burst>"));
    const QByteArray body = bodyOf(b.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagFrequency, TagBandwidth, TagQuality, TagAzimuth, TagAzimuthVar,
                                              TagElevation, TagElevationVar, TagLevel, TagStartTime, TagStopTime}));
    EXPECT_EQ(valueOf(body, TagFrequency), nestedBody(samples::frequency()));
    EXPECT_EQ(valueOf(body, TagBandwidth), nestedBody(samples::bandwidth()));
    EXPECT_EQ(valueOf(body, TagQuality), utf8Value(QStringLiteral("87.50")));
    EXPECT_EQ(valueOf(body, TagStopTime), utf8Value(timeText(samples::utc(2026, 11, 23, 8, 30, 0, 900))));
    roundTrip(b);
    roundTrip(minimalBurst());
    EXPECT_EQ(tagsOf(bodyOf(minimalBurst().GetBinaryRepresentationAsQByteArray())),
              (QVector<quint32>{TagFrequency, TagBandwidth, TagQuality, TagAzimuth, TagAzimuthVar, TagLevel, TagStartTime,
                                TagStopTime}));
}

TEST(Burst, CheckNamesTheMandatoryMembersInTableOrder)
{
    expectCheckNamesSpoiled<Burst>(samples::burst(), "Burst", {
        {"Quality", [](Burst &b) { b.ResetQuality(); }},
        {"Azimuth", [](Burst &b) { b.ResetAzimuth(); }},
        {"AzimuthVar", [](Burst &b) { b.ResetAzimuthVar(); }},
        {"Level", [](Burst &b) { b.ResetLevel(); }},
        {"StartTime", [](Burst &b) { b.ResetStartTime(); }},
        {"StopTime", [](Burst &b) { b.ResetStopTime(); }},
    });
    Burst b;
    b.SetValidate(false);
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Burst: Please set Quality properly.");
    b.SetQuality(1.0);
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Burst: Please set Azimuth properly.");
    b.SetAzimuth(1.0);
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Burst: Please set AzimuthVar properly.");
    b.SetAzimuthVar(1.0);
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Burst: Please set Level properly.");
    b.SetLevel(1.0);
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Burst: Please set StartTime properly.");
    b.SetStartTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_THROW_MESSAGE(b.Check(), OutOfRangeException, "Burst: Please set StopTime properly.");
    b.SetStopTime(samples::utc(2026, 1, 1, 0, 0, 0, 0));
    EXPECT_NO_THROW(b.Check());
    EXPECT_FALSE(b.HasData());
}

TEST(Burst, FrequencyAndBandwidthAreMandatory)
{
    Burst noFrequency = minimalBurst();
    noFrequency.ResetFrequency();
    EXPECT_FALSE(noFrequency.HasData());
    EXPECT_THROW_MESSAGE(noFrequency.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'Burst'.");
    Burst noBandwidth = minimalBurst();
    noBandwidth.ResetBandwidth();
    EXPECT_FALSE(noBandwidth.HasData());
    EXPECT_THROW_MESSAGE(noBandwidth.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Bandwidth are not set properly in 'Burst'.");
    noBandwidth.SetValidate(false);
    EXPECT_TRUE(compactXml(noBandwidth).contains(QStringLiteral("<Bandwidth>0.00</Bandwidth>")));
}

TEST(Burst, DeepDifferencesMakeBurstsUnequal)
{
    const Burst original = samples::burst();
    Burst copy = original;
    EXPECT_EQ(copy, original);
    copy.GetBandwidth().SetMax(1.0);
    EXPECT_NE(copy, original);
    EXPECT_FALSE(original.GetBandwidth().IsMaxSet());
    Burst level = original;
    level.SetLevel(-61.749999999);
    EXPECT_NE(level, original);
    // The written text is the same, the value is not.
    EXPECT_EQ(compactXml(level), compactXml(original));
}

TEST(Burst, BadInputKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::burst(), minimalBurst());
    expectBadBinaryKeepsRecord(samples::burst(), minimalBurst());
    Burst numbers;
    numbers.SetValidate(false);
    QByteArray rep = representation(Burst::GetId(), frame(TagQuality, utf8Value(QStringLiteral("good")))
                                                        + frame(TagStopTime, utf8Value(QStringLiteral("never"))));
    ASSERT_TRUE(numbers.SetBinaryRepresentation(rep));
    EXPECT_TRUE(numbers.IsQualitySet());
    EXPECT_EQ(numbers.GetQuality(), 0.0);
    EXPECT_TRUE(numbers.IsStopTimeSet());
    EXPECT_FALSE(numbers.GetStopTime().isValid());
}
