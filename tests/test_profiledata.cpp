// Tests of the profile data of an entry: Profile_Data, PointOfInterest with
// its choice between a radius and an ellipse, PointOfInterestLocation
// (element "Location") and Ellipse: names, accessors, Check, both written
// forms, copies and damaged input.

#include "recordtestsupport.h"
#include "tags.h"
#include "treesamples.h"
#include "treetestsupport.h"

#include <limits>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::BinaryParsingException;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;

namespace {

using PointChoice = PointOfInterest::ChoicePointOfInterest;

const QString kEllipseMissing = QStringLiteral(
    "PointOfInterest:Check failed. The mandatory member m_ellipse is not set or mandatory data of the member is not set.");
const QString kRadiusMissing = QStringLiteral("PointOfInterest:Check failed. m_radius is not set");

// The four mandatory strings and nothing else.
Profile_Data minimalProfile()
{
    Profile_Data p;
    p.SetSignalClass(QStringLiteral("Data"));
    p.SetProfileID(QStringLiteral("P-1"));
    p.SetTransmissionSystem(QStringLiteral("DMR"));
    p.SetProfileName(QStringLiteral("Taxi"));
    return p;
}

// A profile that differs from samples::profileData(), to read into.
Profile_Data otherProfile()
{
    Profile_Data p = minimalProfile();
    p.SetPriority(QStringLiteral("low"));
    p.SetDefaultThreatClass(QStringLiteral("default threat"));
    PointOfInterest point;
    point.SetLocation(samples::pointLocation(1.0, 2.0));
    point.SetRadius(3.0);
    p.AppendPointOfInterest(point);
    return p;
}

PointOfInterest otherPoint()
{
    PointOfInterest p;
    p.SetDisplayName(QStringLiteral("other"));
    p.SetLocation(samples::pointLocation(10.0, -20.0));
    p.SetEllipse(samples::ellipse(1.0, 2.0, 3.0));
    p.SetDefaultRadius(77.0);
    return p;
}

} // namespace

// --- names and ids -----------------------------------------------------------------------

TEST(ProfileDataRecord, IdsAndElementNames)
{
    EXPECT_EQ(qint64(0x11a4c3bc), Profile_Data::GetId());
    EXPECT_EQ(qint64(0xffffffffd7946212ull), PointOfInterest::GetId());
    EXPECT_EQ(qint64(0x65e33040), PointOfInterestLocation::GetId());
    EXPECT_EQ(qint64(0x3536d71e), Ellipse::GetId());
    EXPECT_EQ(QString("Profile_Data"), Profile_Data().GetObjectName());
    EXPECT_EQ(QString("PointOfInterest"), PointOfInterest().GetObjectName());
    EXPECT_EQ(QString("Location"), PointOfInterestLocation().GetObjectName());
    EXPECT_EQ(QString("Ellipse"), Ellipse().GetObjectName());
}

// --- the ObjectName member -----------------------------------------------------------------

TEST(ProfileDataObjectName, LocalAccessorsLeaveTheObjectNameAlone)
{
    Profile_Data p;
    EXPECT_FALSE(p.IsObjectNameSet());
    p.SetLocalObjectName(QStringLiteral("Pier 3"));
    EXPECT_TRUE(p.IsObjectNameSet());
    EXPECT_EQ(QString("Pier 3"), p.GetLocalObjectName());
    EXPECT_EQ(QString("Profile_Data"), p.GetObjectName());
    EXPECT_TRUE(p.IsValidObjectName(QLatin1String("")));
    EXPECT_FALSE(p.IsValidObjectName(QString()));

    p.SetDefaultObjectName(QStringLiteral("fallback"));
    EXPECT_EQ(QString("fallback"), p.GetDefaultObjectName());
    EXPECT_EQ(QString("Pier 3"), p.GetLocalObjectName());
    p.ResetObjectName();
    EXPECT_FALSE(p.IsObjectNameSet());
    // A string's reset value is the null string, not its default.
    EXPECT_TRUE(p.GetLocalObjectName().isNull());
    p.ResetToDefault();
    EXPECT_TRUE(p.IsObjectNameSet());
    EXPECT_EQ(QString("fallback"), p.GetLocalObjectName());
    EXPECT_EQ(QString("Profile_Data"), p.GetObjectName());
}

TEST(ProfileDataObjectName, NullRefusedWithValidation)
{
    Profile_Data p;
    p.SetLocalObjectName(QStringLiteral("kept"));
    EXPECT_THROW_MESSAGE(p.SetLocalObjectName(QString()), OutOfRangeException,
                         "Profile_Data: Please set ObjectName properly.");
    EXPECT_EQ(QString("kept"), p.GetLocalObjectName());
    p.SetValidate(false);
    p.SetLocalObjectName(QString());
    EXPECT_TRUE(p.IsObjectNameSet());
    EXPECT_TRUE(p.GetLocalObjectName().isNull());
}

TEST(ProfileDataObjectName, WrittenAndReadAsObjectName)
{
    Profile_Data p = minimalProfile();
    p.SetLocalObjectName(QStringLiteral("Pier 3"));
    const QString xml = compactXml(p);
    EXPECT_TRUE(xml.startsWith("<Profile_Data>")) << xml.toStdString();
    EXPECT_TRUE(xml.contains("<ObjectName>Pier 3</ObjectName>")) << xml.toStdString();
    EXPECT_EQ(utf8Value("Pier 3"), valueOf(bodyOf(p.GetBinaryRepresentationAsQByteArray()), TagObjectName));

    Profile_Data read;
    ASSERT_TRUE(read.SetXmlString("<Profile_Data><ObjectName>Quay</ObjectName></Profile_Data>", true));
    EXPECT_EQ(QString("Quay"), read.GetLocalObjectName());
    EXPECT_EQ(QString("Profile_Data"), read.GetObjectName());
    // Written again, the member is an element of its own and the record keeps
    // its element name.
    Profile_Data lax = read;
    lax.SetValidate(false);
    EXPECT_EQ(QString("<Profile_Data><SignalClass></SignalClass><ProfileID></ProfileID>"
                      "<TransmissionSystem></TransmissionSystem><ProfileName></ProfileName>"
                      "<ObjectName>Quay</ObjectName></Profile_Data>"),
              compactXml(lax));
}

// --- Profile_Data: Check, HasData --------------------------------------------------------

TEST(ProfileDataCheck, MandatoryStringsInOrder)
{
    Profile_Data p;
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set SignalClass properly.");
    p.SetSignalClass(QLatin1String(""));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set ProfileID properly.");
    p.SetProfileID(QStringLiteral("id"));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set TransmissionSystem properly.");
    p.SetTransmissionSystem(QStringLiteral("ts"));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set ProfileName properly.");
    p.SetProfileName(QStringLiteral("name"));
    EXPECT_NO_THROW(p.Check());
    EXPECT_TRUE(p.HasData());
}

TEST(ProfileDataCheck, NullOptionalStringsBeforeMandatoryOnes)
{
    Profile_Data p;
    p.SetValidate(false);
    p.SetThreatClass(QString());
    p.SetPriority(QString());
    p.SetLocalObjectName(QString());
    // Nothing mandatory is set, yet the null optional strings come first.
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set ObjectName properly.");
    p.SetLocalObjectName(QStringLiteral("o"));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set Priority properly.");
    p.SetPriority(QStringLiteral("p"));
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set ThreatClass properly.");
    p.ResetThreatClass();
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Profile_Data: Please set SignalClass properly.");
}

TEST(ProfileDataCheck, NamesEachSpoiledMember)
{
    expectCheckNamesSpoiled<Profile_Data>(samples::profileData(), "Profile_Data", {
        {"SignalClass", [](Profile_Data &p) { p.SetSignalClass(QString()); }},
        {"ProfileID", [](Profile_Data &p) { p.SetProfileID(QString()); }},
        {"TransmissionSystem", [](Profile_Data &p) { p.SetTransmissionSystem(QString()); }},
        {"ProfileName", [](Profile_Data &p) { p.SetProfileName(QString()); }},
        {"ObjectName", [](Profile_Data &p) { p.SetLocalObjectName(QString()); }},
        {"Priority", [](Profile_Data &p) { p.SetPriority(QString()); }},
        {"ThreatClass", [](Profile_Data &p) { p.SetThreatClass(QString()); }},
        {"SignalClass", [](Profile_Data &p) { p.ResetSignalClass(); }},
        {"ProfileName", [](Profile_Data &p) { p.ResetProfileName(); }},
    });
}

TEST(ProfileDataCheck, NullRefusedBySetters)
{
    Profile_Data p;
    EXPECT_THROW_MESSAGE(p.SetSignalClass(QString()), OutOfRangeException, "Profile_Data: Please set SignalClass properly.");
    EXPECT_THROW_MESSAGE(p.SetProfileID(QString()), OutOfRangeException, "Profile_Data: Please set ProfileID properly.");
    EXPECT_THROW_MESSAGE(p.SetTransmissionSystem(QString()), OutOfRangeException,
                         "Profile_Data: Please set TransmissionSystem properly.");
    EXPECT_THROW_MESSAGE(p.SetProfileName(QString()), OutOfRangeException, "Profile_Data: Please set ProfileName properly.");
    EXPECT_THROW_MESSAGE(p.SetPriority(QString()), OutOfRangeException, "Profile_Data: Please set Priority properly.");
    EXPECT_THROW_MESSAGE(p.SetThreatClass(QString()), OutOfRangeException, "Profile_Data: Please set ThreatClass properly.");
    EXPECT_FALSE(p.AnyData());
}

TEST(ProfileDataCheck, ChecksEveryPoint)
{
    Profile_Data p = samples::profileData();
    EXPECT_NO_THROW(p.Check());
    p.SetValidate(false);
    p.GetPointOfInterest()[1].GetLocation().SetLatitude(90.5);
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Location: Please set Latitude properly.");
    p.GetPointOfInterest()[1].GetLocation().SetLatitude(90.0);
    p.GetPointOfInterest()[0].SetDisplayName(QString());
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "PointOfInterest: Please set DisplayName properly.");
}

TEST(ProfileDataCheck, HasDataNeedsTheFourMandatoryStrings)
{
    EXPECT_TRUE(minimalProfile().HasData());
    Profile_Data optionalOnly;
    optionalOnly.SetPriority(QStringLiteral("high"));
    optionalOnly.SetLocalObjectName(QStringLiteral("o"));
    EXPECT_FALSE(optionalOnly.HasData());
    EXPECT_TRUE(optionalOnly.AnyData());
    Profile_Data pointsOnly;
    pointsOnly.AppendPointOfInterest(samples::radiusPoint());
    EXPECT_FALSE(pointsOnly.HasData());
    EXPECT_TRUE(pointsOnly.AnyData());
    for (int missing = 0; missing < 4; ++missing) {
        Profile_Data p = minimalProfile();
        switch (missing) {
        case 0: p.ResetSignalClass(); break;
        case 1: p.ResetProfileID(); break;
        case 2: p.ResetTransmissionSystem(); break;
        default: p.ResetProfileName(); break;
        }
        EXPECT_FALSE(p.HasData()) << missing;
    }
}

TEST(ProfileDataAppend, IncompletePointRefusedWithValidation)
{
    Profile_Data p = minimalProfile();
    PointOfInterest noBranch;
    noBranch.SetLocation(samples::pointLocation(1.0, 1.0));
    EXPECT_THROW_MESSAGE(p.AppendPointOfInterest(noBranch), IncompleteDefinitionException,
                         "Profile_Data: Tried to append not completely defined or invalid item PointOfInterest.");
    PointOfInterest noLocation;
    noLocation.SetRadius(5.0);
    EXPECT_THROW_MESSAGE(p.AppendPointOfInterest(noLocation), IncompleteDefinitionException,
                         "Profile_Data: Tried to append not completely defined or invalid item PointOfInterest.");
    EXPECT_FALSE(p.IsPointOfInterestSet());
    const Profile_Data &view = p;
    EXPECT_TRUE(view.GetPointOfInterest().isEmpty());

    p.SetValidate(false);
    p.AppendPointOfInterest(noBranch);
    p.AppendPointOfInterest(PointOfInterest());
    EXPECT_EQ(2, view.GetPointOfInterest().size());
    EXPECT_TRUE(p.IsPointOfInterestSet());
}

// --- Profile_Data: written forms ---------------------------------------------------------

TEST(ProfileDataXml, ElementsInTableOrder)
{
    Profile_Data p;
    p.AppendPointOfInterest(samples::radiusPoint());
    p.SetThreatClass(QLatin1String(""));
    p.SetPriority(QStringLiteral("high"));
    p.SetLocalObjectName(QStringLiteral("Pier 3"));
    p.SetProfileName(QStringLiteral("Harbour radio"));
    p.SetTransmissionSystem(QStringLiteral("TETRA"));
    p.SetProfileID(QStringLiteral("P-0042"));
    p.SetSignalClass(QStringLiteral("Voice"));
    p.AppendPointOfInterest(samples::ellipsePoint());
    EXPECT_EQ(QString("<Profile_Data><SignalClass>Voice</SignalClass><ProfileID>P-0042</ProfileID>"
                      "<TransmissionSystem>TETRA</TransmissionSystem><ProfileName>Harbour radio</ProfileName>"
                      "<ObjectName>Pier 3</ObjectName><Priority>high</Priority><ThreatClass></ThreatClass>")
                  + compactXml(samples::radiusPoint()) + compactXml(samples::ellipsePoint()) + "</Profile_Data>",
              compactXml(p));
    EXPECT_TRUE(p == samples::profileData());
    EXPECT_EQ(compactXml(samples::profileData()), compactXml(p));
}

TEST(ProfileDataXml, NoPointsNoPointElement)
{
    const Profile_Data p = minimalProfile();
    EXPECT_EQ(QString("<Profile_Data><SignalClass>Data</SignalClass><ProfileID>P-1</ProfileID>"
                      "<TransmissionSystem>DMR</TransmissionSystem><ProfileName>Taxi</ProfileName></Profile_Data>"),
              compactXml(p));
    Profile_Data emptyVector = minimalProfile();
    emptyVector.GetPointOfInterest();
    EXPECT_TRUE(emptyVector.IsPointOfInterestSet());
    EXPECT_FALSE(compactXml(emptyVector).contains("PointOfInterest"));
}

TEST(ProfileDataXml, MandatoryWrittenUnsetWithoutValidation)
{
    Profile_Data p;
    p.SetValidate(false);
    EXPECT_EQ(QString("<Profile_Data><SignalClass></SignalClass><ProfileID></ProfileID>"
                      "<TransmissionSystem></TransmissionSystem><ProfileName></ProfileName></Profile_Data>"),
              compactXml(p));
}

TEST(ProfileDataBinary, TagsAndValues)
{
    const Profile_Data p = samples::profileData();
    const QByteArray rep = p.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(be32(0x11a4c3bcu), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ((QVector<quint32>{TagSignalClass, TagProfileID, TagTransmissionSystem, TagProfileName, TagObjectName,
                                TagPriority, TagThreatClass, TagPointOfInterest}),
              tagsOf(body));
    EXPECT_EQ(utf8Value("Voice"), valueOf(body, TagSignalClass));
    EXPECT_EQ(utf8Value("P-0042"), valueOf(body, TagProfileID));
    EXPECT_EQ(utf8Value("TETRA"), valueOf(body, TagTransmissionSystem));
    EXPECT_EQ(utf8Value("Harbour radio"), valueOf(body, TagProfileName));
    EXPECT_EQ(utf8Value("high"), valueOf(body, TagPriority));
    // An empty, not null, string: size 0.
    EXPECT_EQ(be32(0), valueOf(body, TagThreatClass));
    const QByteArray radius = bodyOf(samples::radiusPoint().GetBinaryRepresentationAsQByteArray());
    const QByteArray ellipse = bodyOf(samples::ellipsePoint().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(be32(2) + be32(quint32(radius.size())) + radius + be32(quint32(ellipse.size())) + ellipse,
              valueOf(body, TagPointOfInterest));
}

TEST(ProfileDataBinary, NoPointsGivesCountZero)
{
    const QByteArray body = bodyOf(minimalProfile().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(frame(TagSignalClass, utf8Value("Data")) + frame(TagProfileID, utf8Value("P-1"))
                  + frame(TagTransmissionSystem, utf8Value("DMR")) + frame(TagProfileName, utf8Value("Taxi"))
                  + frame(TagPointOfInterest, be32(0)),
              body);
}

TEST(ProfileDataRoundTrip, FullAndMinimal)
{
    const RoundTrip<Profile_Data> trip = roundTrip(samples::profileData());
    for (const Profile_Data *back : {&trip.fromXml, &trip.fromBinary}) {
        EXPECT_EQ(QString("Pier 3"), back->GetLocalObjectName());
        EXPECT_TRUE(back->IsThreatClassSet());
        EXPECT_FALSE(back->GetThreatClass().isNull());
        ASSERT_EQ(2, back->GetPointOfInterest().size());
        EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, back->GetPointOfInterest().at(0).GetChoicePointOfInterest());
        EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, back->GetPointOfInterest().at(1).GetChoicePointOfInterest());
        EXPECT_EQ(2500.0, back->GetPointOfInterest().at(0).GetRadius());
        EXPECT_EQ(-33.75, back->GetPointOfInterest().at(1).GetEllipse().GetRotation());
    }
    roundTrip(minimalProfile());
}

TEST(ProfileDataCopy, DeepDifferenceAndIndependence)
{
    const Profile_Data a = samples::profileData();
    Profile_Data b = a;
    EXPECT_TRUE(a == b);
    b.GetPointOfInterest()[1].GetEllipse().SetRotation(0.0);
    EXPECT_FALSE(a == b);
    Profile_Data c;
    c = a;
    c.GetPointOfInterest()[0].GetLocation().SetLongitude(16.37382);
    EXPECT_FALSE(a == c);
    Profile_Data d = a;
    d.SetLocalObjectName(QStringLiteral("Pier 4"));
    EXPECT_FALSE(a == d);
    // The source is untouched by all of it.
    EXPECT_TRUE(a == samples::profileData());
    const Profile_Data &view = a;
    EXPECT_EQ(-33.75, view.GetPointOfInterest().at(1).GetEllipse().GetRotation());
    EXPECT_EQ(16.373819, view.GetPointOfInterest().at(0).GetLocation().GetLongitude());

    // Fewer points, or the same points in another order, differ too.
    Profile_Data e = a;
    e.GetPointOfInterest().removeLast();
    EXPECT_FALSE(a == e);
    Profile_Data f = minimalProfile();
    Profile_Data g = minimalProfile();
    f.AppendPointOfInterest(samples::radiusPoint());
    f.AppendPointOfInterest(samples::ellipsePoint());
    g.AppendPointOfInterest(samples::ellipsePoint());
    g.AppendPointOfInterest(samples::radiusPoint());
    EXPECT_FALSE(f == g);
}

// --- PointOfInterest: the choice -----------------------------------------------------------

TEST(PointOfInterestChoice, Names)
{
    EXPECT_EQ((QStringList{"Radius", "Ellipse"}), PointOfInterest::GetChoicePointOfInterests());
    EXPECT_EQ(PointOfInterest::GetChoicePointOfInterests(), PointOfInterest::GetGUIChoicePointOfInterests());
    EXPECT_EQ(0, int(PointChoice::ChoicePointOfInterest_Radius));
    EXPECT_EQ(1, int(PointChoice::ChoicePointOfInterest_Ellipse));
    PointOfInterest p;
    EXPECT_EQ(-1, int(p.GetInvalidChoicePointOfInterest()));
    EXPECT_EQ(QString("Radius"), p.ChoicePointOfInterestToName(PointChoice(0)));
    EXPECT_EQ(QString("Ellipse"), p.ChoicePointOfInterestToName(PointChoice(1)));
    EXPECT_TRUE(p.ChoicePointOfInterestToName(PointChoice(-1)).isNull());
    EXPECT_EQ(0, int(p.NameToChoicePointOfInterest("Radius")));
    EXPECT_EQ(1, int(p.NameToChoicePointOfInterest("Ellipse")));
    EXPECT_EQ(-1, int(p.NameToChoicePointOfInterest("ellipse")));
    EXPECT_EQ(-1, int(p.NameToChoicePointOfInterest("Circle")));
    EXPECT_TRUE(p.IsValidChoicePointOfInterest(PointChoice(0)));
    EXPECT_TRUE(p.IsValidChoicePointOfInterest(PointChoice(1)));
    EXPECT_FALSE(p.IsValidChoicePointOfInterest(PointChoice(2)));
    EXPECT_FALSE(p.IsValidChoicePointOfInterest(PointChoice(-1)));
    p.SetInvalidChoicePointOfInterest(PointChoice(9));
    EXPECT_EQ(9, int(p.NameToChoicePointOfInterest("Circle")));
}

TEST(PointOfInterestChoice, GuiNamesGoThroughTranslation)
{
    ScopedMarkingTranslator translator;
    ASSERT_TRUE(translator.installed());
    EXPECT_EQ(ScopedMarkingTranslator::marked("Morvane::PointOfInterest", QStringList{"Radius", "Ellipse"}),
              PointOfInterest::GetGUIChoicePointOfInterests());
    EXPECT_EQ((QStringList{"Radius", "Ellipse"}), PointOfInterest::GetChoicePointOfInterests());
}

TEST(PointOfInterestChoice, NewPointHasNoBranch)
{
    PointOfInterest p;
    EXPECT_EQ(-1, int(p.GetChoicePointOfInterest()));
    EXPECT_FALSE(p.HasData());
    EXPECT_FALSE(p.IsRadiusSet());
    EXPECT_FALSE(p.IsEllipseSet());
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    EXPECT_FALSE(p.HasData());
}

TEST(PointOfInterestChoice, SettersSelectTheirBranch)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.SetRadius(10.0);
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, p.GetChoicePointOfInterest());
    EXPECT_TRUE(p.HasData());
    p.SetEllipse(samples::ellipse());
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, p.GetChoicePointOfInterest());
    EXPECT_TRUE(p.IsRadiusSet());
    EXPECT_TRUE(p.IsEllipseSet());
    EXPECT_TRUE(p.HasData());
    p.SetRadius(11.0);
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, p.GetChoicePointOfInterest());
}

TEST(PointOfInterestChoice, NonConstEllipseGetterSelects)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.SetRadius(10.0);
    const PointOfInterest &view = p;
    view.GetEllipse();
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, p.GetChoicePointOfInterest());
    p.GetEllipse();
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, p.GetChoicePointOfInterest());
    EXPECT_TRUE(p.IsEllipseSet());
    // Selected, but without data.
    EXPECT_FALSE(p.HasData());
    p.GetEllipse() = samples::ellipse();
    EXPECT_TRUE(p.HasData());
}

TEST(PointOfInterestChoice, InitChoice)
{
    PointOfInterest p;
    EXPECT_THROW_MESSAGE(p.InitChoice(PointChoice(-1)), OutOfRangeException, "Invalid enum value set in 'PointOfInterest'.");
    p.SetInvalidChoicePointOfInterest(PointChoice(4));
    EXPECT_THROW_MESSAGE(p.InitChoice(PointChoice(4)), OutOfRangeException, "Invalid enum value set in 'PointOfInterest'.");

    PointOfInterest q;
    q.SetDisplayName(QStringLiteral("gone"));
    q.SetEllipse(samples::ellipse());
    q.SetDefaultRadius(12.5);
    q.InitChoice(PointChoice::ChoicePointOfInterest_Radius);
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, q.GetChoicePointOfInterest());
    EXPECT_TRUE(q.IsRadiusSet());
    EXPECT_EQ(12.5, q.GetRadius());
    EXPECT_FALSE(q.IsDisplayNameSet());
    EXPECT_FALSE(q.IsEllipseSet());

    q.SetDefaultEllipse(samples::ellipse(1.0, 2.0, 3.0));
    q.InitChoice(PointChoice::ChoicePointOfInterest_Ellipse);
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, q.GetChoicePointOfInterest());
    EXPECT_TRUE(q.IsEllipseSet());
    EXPECT_FALSE(q.IsRadiusSet());
    const PointOfInterest &view = q;
    EXPECT_TRUE(view.GetEllipse() == samples::ellipse(1.0, 2.0, 3.0));
}

TEST(PointOfInterestChoice, ResetClearsTheChoice)
{
    PointOfInterest p = samples::radiusPoint();
    p.Reset();
    EXPECT_EQ(-1, int(p.GetChoicePointOfInterest()));
    EXPECT_FALSE(p.HasData());
    PointOfInterest q = samples::ellipsePoint();
    q.ResetChoicePointOfInterest();
    EXPECT_EQ(-1, int(q.GetChoicePointOfInterest()));
    EXPECT_TRUE(q.IsEllipseSet());
    EXPECT_FALSE(q.HasData());
}

TEST(PointOfInterestChoice, OnlyTheSelectedBranchIsWritten)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.SetEllipse(samples::ellipse());
    p.SetRadius(2500.0);
    const QString xml = compactXml(p);
    EXPECT_TRUE(xml.contains("<Radius>2500.00</Radius>")) << xml.toStdString();
    EXPECT_FALSE(xml.contains("Ellipse")) << xml.toStdString();
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{TagPointLocation, TagRadius}), tagsOf(body));

    p.GetEllipse();
    const QString xml2 = compactXml(p);
    EXPECT_FALSE(xml2.contains("<Radius>")) << xml2.toStdString();
    EXPECT_TRUE(xml2.contains("<Ellipse>")) << xml2.toStdString();
    EXPECT_EQ((QVector<quint32>{TagPointLocation, TagEllipse}), tagsOf(bodyOf(p.GetBinaryRepresentationAsQByteArray())));
}

TEST(PointOfInterestChoice, RadiusPointWritesNoEllipseAndTheOtherWayRound)
{
    const PointOfInterest radius = samples::radiusPoint();
    EXPECT_FALSE(compactXml(radius).contains("<Ellipse"));
    EXPECT_FALSE(hasTag(bodyOf(radius.GetBinaryRepresentationAsQByteArray()), TagEllipse));
    const PointOfInterest ellipse = samples::ellipsePoint();
    EXPECT_FALSE(compactXml(ellipse).contains("<Radius"));
    EXPECT_FALSE(hasTag(bodyOf(ellipse.GetBinaryRepresentationAsQByteArray()), TagRadius));
    // Each writes its own branch, behind the location.
    EXPECT_EQ((QStringList{"DisplayName", "Location", "Radius"}), childNames(compactXml(radius)));
    EXPECT_EQ((QStringList{"Location", "Ellipse"}), childNames(compactXml(ellipse)));
}

TEST(PointOfInterestChoice, NoBranchWritesNeitherWithoutValidation)
{
    PointOfInterest p;
    p.SetValidate(false);
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.SetRadius(3.0);
    p.SetEllipse(samples::ellipse());
    p.ResetChoicePointOfInterest();
    EXPECT_EQ(QString("<PointOfInterest><Location><Longitude>1.000000</Longitude><Latitude>2.000000</Latitude>"
                      "</Location></PointOfInterest>"),
              compactXml(p));
    EXPECT_EQ((QVector<quint32>{TagPointLocation}), tagsOf(bodyOf(p.GetBinaryRepresentationAsQByteArray())));
}

// --- PointOfInterest: written forms ----------------------------------------------------------

TEST(PointOfInterestForms, RadiusBranchAfterLocation)
{
    const PointOfInterest p = samples::radiusPoint();
    EXPECT_EQ(QString::fromUtf8("<PointOfInterest><DisplayName>Hafen S\xc3\xbc\x64</DisplayName><Location>"
                                "<Longitude>16.373819</Longitude><Latitude>48.208174</Latitude></Location>"
                                "<Radius>2500.00</Radius></PointOfInterest>"),
              compactXml(p));
    const QByteArray rep = p.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(be32(0xd7946212u), rep.left(4));
    const QByteArray location = bodyOf(samples::pointLocation(16.373819, 48.208174).GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(frame(TagDisplayName, utf8Value(QString::fromUtf8("Hafen S\xc3\xbc\x64"))) + frame(TagPointLocation, location)
                  + frame(TagRadius, utf8Value("2500.00")),
              bodyOf(rep));
}

TEST(PointOfInterestForms, EllipseBranchAfterLocation)
{
    const PointOfInterest p = samples::ellipsePoint();
    EXPECT_EQ(QString("<PointOfInterest><Location><Longitude>-180.000000</Longitude><Latitude>90.000000</Latitude>"
                      "</Location><Ellipse><MinRadius>120.50</MinRadius><MaxRadius>480.25</MaxRadius>"
                      "<Rotation>-33.75</Rotation></Ellipse></PointOfInterest>"),
              compactXml(p));
    const QByteArray body = bodyOf(p.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{TagPointLocation, TagEllipse}), tagsOf(body));
    EXPECT_EQ(bodyOf(samples::ellipse().GetBinaryRepresentationAsQByteArray()), valueOf(body, TagEllipse));
    EXPECT_EQ(bodyOf(samples::pointLocation(-180.0, 90.0).GetBinaryRepresentationAsQByteArray()),
              valueOf(body, TagPointLocation));
}

TEST(PointOfInterestForms, ReadingSelectsTheBranch)
{
    const QString location = "<Location><Longitude>1.000000</Longitude><Latitude>2.000000</Latitude></Location>";
    const QString ellipse = "<Ellipse><MinRadius>1.00</MinRadius><MaxRadius>2.00</MaxRadius><Rotation>3.00</Rotation></Ellipse>";
    PointOfInterest fromEllipse = samples::radiusPoint();
    ASSERT_TRUE(fromEllipse.SetXmlString("<PointOfInterest>" + location + ellipse + "</PointOfInterest>", true));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, fromEllipse.GetChoicePointOfInterest());
    EXPECT_EQ(3.0, fromEllipse.GetEllipse().GetRotation());

    PointOfInterest fromRadius = samples::ellipsePoint();
    ASSERT_TRUE(fromRadius.SetXmlString("<PointOfInterest>" + location + "<Radius>7.50</Radius></PointOfInterest>", true));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, fromRadius.GetChoicePointOfInterest());
    EXPECT_EQ(7.5, fromRadius.GetRadius());

    // Both branches in one document: the last one read stands.
    PointOfInterest both;
    ASSERT_TRUE(both.SetXmlString("<PointOfInterest>" + location + ellipse + "<Radius>7.50</Radius></PointOfInterest>", true));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, both.GetChoicePointOfInterest());
    EXPECT_TRUE(both.IsEllipseSet());
    PointOfInterest both2;
    ASSERT_TRUE(both2.SetXmlString("<PointOfInterest>" + location + "<Radius>7.50</Radius>" + ellipse + "</PointOfInterest>", true));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, both2.GetChoicePointOfInterest());

    // The same in binary.
    const QByteArray locationFrame = nested(samples::pointLocation(1.0, 2.0), TagPointLocation);
    const QByteArray ellipseFrame = nested(samples::ellipse(), TagEllipse);
    const QByteArray radiusFrame = frame(TagRadius, utf8Value("7.50"));
    PointOfInterest b1 = samples::radiusPoint();
    QByteArray rep1 = representation(PointOfInterest::GetId(), locationFrame + ellipseFrame);
    ASSERT_TRUE(b1.SetBinaryRepresentation(rep1));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, b1.GetChoicePointOfInterest());
    PointOfInterest b2 = samples::ellipsePoint();
    QByteArray rep2 = representation(PointOfInterest::GetId(), locationFrame + radiusFrame);
    ASSERT_TRUE(b2.SetBinaryRepresentation(rep2));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, b2.GetChoicePointOfInterest());
    EXPECT_EQ(7.5, b2.GetRadius());
    PointOfInterest b3;
    QByteArray rep3 = representation(PointOfInterest::GetId(), locationFrame + radiusFrame + ellipseFrame);
    ASSERT_TRUE(b3.SetBinaryRepresentation(rep3));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, b3.GetChoicePointOfInterest());
    EXPECT_TRUE(b3.IsRadiusSet());
}

TEST(PointOfInterestForms, RoundTripOfBothBranches)
{
    for (const PointOfInterest &p : {samples::radiusPoint(), samples::ellipsePoint()}) {
        const RoundTrip<PointOfInterest> trip = roundTrip(p);
        EXPECT_EQ(p.GetChoicePointOfInterest(), trip.fromXml.GetChoicePointOfInterest());
        EXPECT_EQ(p.GetChoicePointOfInterest(), trip.fromBinary.GetChoicePointOfInterest());
    }
    EXPECT_FALSE(samples::radiusPoint() == samples::ellipsePoint());
}

TEST(PointOfInterestForms, DisplayNameOptional)
{
    PointOfInterest p = samples::radiusPoint();
    p.ResetDisplayName();
    EXPECT_TRUE(p.HasData());
    EXPECT_EQ((QStringList{"Location", "Radius"}), childNames(compactXml(p)));
    EXPECT_THROW_MESSAGE(p.SetDisplayName(QString()), OutOfRangeException, "PointOfInterest: Please set DisplayName properly.");
}

// --- PointOfInterest: Check --------------------------------------------------------------

TEST(PointOfInterestCheck, EllipseBranchWithoutData)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.GetEllipse();
    EXPECT_THROW_MESSAGE(p.Check(), IncompleteDefinitionException, kEllipseMissing);
    Ellipse half;
    half.SetMinRadius(1.0);
    half.SetMaxRadius(2.0);
    p.SetEllipse(half);
    EXPECT_THROW_MESSAGE(p.Check(), IncompleteDefinitionException, kEllipseMissing);
    p.GetEllipse().SetRotation(0.0);
    EXPECT_NO_THROW(p.Check());
}

TEST(PointOfInterestCheck, RadiusBranchWithoutValue)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.SetRadius(5.0);
    EXPECT_NO_THROW(p.Check());
    p.ResetRadius();
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, p.GetChoicePointOfInterest());
    EXPECT_THROW_MESSAGE(p.Check(), IncompleteDefinitionException, kRadiusMissing);
    EXPECT_FALSE(p.HasData());
}

TEST(PointOfInterestCheck, BranchTestOnlyWithValidation)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.GetEllipse();
    EXPECT_THROW_MESSAGE(p.Check(), IncompleteDefinitionException, kEllipseMissing);
    // Without validation the branch test is skipped, but the selected
    // branch is still checked as a set member.
    p.SetValidate(false);
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Ellipse: Please set MinRadius properly.");

    PointOfInterest r;
    r.SetLocation(samples::pointLocation(1.0, 2.0));
    r.SetRadius(1.0);
    r.ResetRadius();
    r.SetValidate(false);
    EXPECT_NO_THROW(r.Check());
}

TEST(PointOfInterestCheck, OnlyTheSelectedBranchIsChecked)
{
    PointOfInterest p;
    p.SetLocation(samples::pointLocation(1.0, 2.0));
    p.GetEllipse();
    p.SetRadius(1.0);
    // The ellipse is empty, but the radius branch is the selected one.
    EXPECT_NO_THROW(p.Check());
    EXPECT_TRUE(p.HasData());
    EXPECT_FALSE(compactXml(p).contains("Ellipse"));
}

TEST(PointOfInterestCheck, SelectedEllipseIsChecked)
{
    PointOfInterest p = samples::ellipsePoint();
    p.SetValidate(false);
    p.GetEllipse().SetRotation(std::numeric_limits<double>::quiet_NaN());
    // The ellipse has no range; a NaN passes.
    EXPECT_NO_THROW(p.Check());
    p.GetLocation().SetLongitude(181.0);
    EXPECT_THROW_MESSAGE(p.Check(), OutOfRangeException, "Location: Please set Longitude properly.");
}

TEST(PointOfInterestCheck, LocationIsMandatory)
{
    PointOfInterest p;
    p.SetRadius(100.0);
    EXPECT_FALSE(p.HasData());
    PointOfInterest half = samples::radiusPoint();
    half.GetLocation().ResetLatitude();
    EXPECT_FALSE(half.HasData());

    // Written with validation on, the missing location is named and nothing
    // is written.
    QString text;
    {
        QXmlStreamWriter writer(&text);
        EXPECT_THROW_MESSAGE(p.GetXml(writer), IncompleteDefinitionException,
                             "Parameters for Location are not set properly in 'PointOfInterest'.");
    }
    EXPECT_TRUE(text.isEmpty());
    EXPECT_THROW_MESSAGE(half.GetBinaryRepresentationAsQByteArray(), IncompleteDefinitionException,
                         "Parameters for Location are not set properly in 'PointOfInterest'.");

    // Without validation the location is written from what its slot holds.
    p.SetValidate(false);
    EXPECT_EQ(QString("<PointOfInterest><Location><Longitude>0.000000</Longitude><Latitude>0.000000</Latitude>"
                      "</Location><Radius>100.00</Radius></PointOfInterest>"),
              compactXml(p));
}

// --- PointOfInterestLocation -------------------------------------------------------------

TEST(PointOfInterestLocationRange, BoundsAccepted)
{
    PointOfInterestLocation l;
    EXPECT_NO_THROW(l.SetLongitude(180.0));
    EXPECT_NO_THROW(l.SetLatitude(-90.0));
    EXPECT_NO_THROW(l.Check());
    EXPECT_EQ(QString("<Location><Longitude>180.000000</Longitude><Latitude>-90.000000</Latitude></Location>"),
              compactXml(l));
    EXPECT_NO_THROW(l.SetLongitude(-180.0));
    EXPECT_NO_THROW(l.SetLatitude(90.0));
    roundTrip(l);
}

TEST(PointOfInterestLocationRange, JustOutsideRefused)
{
    PointOfInterestLocation l = samples::pointLocation(16.0, 48.0);
    EXPECT_THROW_MESSAGE(l.SetLongitude(180.000001), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Location'.");
    EXPECT_THROW_MESSAGE(l.SetLongitude(-180.000001), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'Location'.");
    EXPECT_THROW_MESSAGE(l.SetLatitude(90.000001), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Location'.");
    EXPECT_THROW_MESSAGE(l.SetLatitude(-90.000001), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Location'.");
    EXPECT_TRUE(l == samples::pointLocation(16.0, 48.0));
    EXPECT_EQ(16.0, l.GetLongitude());
    EXPECT_EQ(48.0, l.GetLatitude());

    l.SetValidate(false);
    l.SetLatitude(-90.000001);
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "Location: Please set Latitude properly.");
}

TEST(PointOfInterestLocationCheck, BothMandatory)
{
    PointOfInterestLocation l;
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "Location: Please set Longitude properly.");
    l.SetLatitude(1.0);
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "Location: Please set Longitude properly.");
    EXPECT_FALSE(l.HasData());
    EXPECT_TRUE(l.AnyData());
    l.ResetLatitude();
    l.SetLongitude(1.0);
    EXPECT_THROW_MESSAGE(l.Check(), OutOfRangeException, "Location: Please set Latitude properly.");
    l.SetLatitude(1.0);
    EXPECT_NO_THROW(l.Check());
    EXPECT_TRUE(l.HasData());
}

TEST(PointOfInterestLocationForms, BinaryTagsAndTexts)
{
    const PointOfInterestLocation l = samples::pointLocation(16.373819, -0.000001);
    const QByteArray rep = l.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(representation(0x65e33040, frame(TagLongitude, utf8Value("16.373819"))
                                             + frame(TagLatitude, utf8Value("-0.000001"))),
              rep);
    roundTrip(l);
}

// --- Ellipse -----------------------------------------------------------------------------

TEST(EllipseCheck, NamesEachUnsetMember)
{
    Ellipse e;
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Ellipse: Please set MinRadius properly.");
    e.SetRotation(1.0);
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Ellipse: Please set MinRadius properly.");
    e.SetMinRadius(1.0);
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Ellipse: Please set MaxRadius properly.");
    e.SetMaxRadius(2.0);
    EXPECT_NO_THROW(e.Check());
    e.ResetRotation();
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "Ellipse: Please set Rotation properly.");
    EXPECT_FALSE(e.HasData());
    EXPECT_TRUE(e.AnyData());
}

TEST(EllipseCheck, NoRelationBetweenTheRadii)
{
    const Ellipse e = samples::ellipse(500.0, 1.0, -720.0);
    EXPECT_NO_THROW(e.Check());
    EXPECT_TRUE(e.HasData());
    Ellipse negative;
    EXPECT_NO_THROW(negative.SetMinRadius(-5.0));
    EXPECT_NO_THROW(negative.SetMaxRadius(-10.0));
    EXPECT_NO_THROW(negative.SetRotation(1e6));
    EXPECT_NO_THROW(negative.Check());
    roundTrip(e);
}

TEST(EllipseForms, ElementsTagsAndTexts)
{
    const Ellipse e = samples::ellipse();
    EXPECT_EQ(QString("<Ellipse><MinRadius>120.50</MinRadius><MaxRadius>480.25</MaxRadius>"
                      "<Rotation>-33.75</Rotation></Ellipse>"),
              compactXml(e));
    EXPECT_EQ(representation(0x3536d71e, frame(TagMinRadius, utf8Value("120.50")) + frame(TagMaxRadius, utf8Value("480.25"))
                                             + frame(TagRotation, utf8Value("-33.75"))),
              e.GetBinaryRepresentationAsQByteArray());
    const RoundTrip<Ellipse> trip = roundTrip(e);
    EXPECT_EQ(480.25, trip.fromXml.GetMaxRadius());
    EXPECT_EQ(120.5, trip.fromBinary.GetMinRadius());
}

TEST(EllipseForms, UnsetMembersWrittenWithoutValidation)
{
    Ellipse e;
    e.SetValidate(false);
    e.SetMaxRadius(3.0);
    EXPECT_EQ(QString("<Ellipse><MinRadius>0.00</MinRadius><MaxRadius>3.00</MaxRadius><Rotation>0.00</Rotation></Ellipse>"),
              compactXml(e));
}

TEST(EllipseCopy, CopiesAreIndependent)
{
    const Ellipse a = samples::ellipse();
    Ellipse b = a;
    EXPECT_TRUE(a == b);
    b.SetMinRadius(0.0);
    EXPECT_FALSE(a == b);
    EXPECT_EQ(120.5, a.GetMinRadius());
    Ellipse c;
    c = a;
    c.ResetRotation();
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(a.IsRotationSet());
}

// --- damaged input -----------------------------------------------------------------------

TEST(ProfileDataBadInput, DamagedBinaryKeepsTheRecord)
{
    expectBadBinaryKeepsRecord(samples::profileData(), otherProfile());
}

TEST(PointOfInterestBadInput, DamagedBinaryKeepsTheRecord)
{
    expectBadBinaryKeepsRecord(samples::radiusPoint(), otherPoint());
    expectBadBinaryKeepsRecord(samples::ellipsePoint(), otherPoint());
    expectBadBinaryKeepsRecord(samples::pointLocation(16.5, 48.25), samples::pointLocation(1.0, 2.0));
}

TEST(EllipseBadInput, DamagedBinaryKeepsTheRecord)
{
    expectBadBinaryKeepsRecord(samples::ellipse(), samples::ellipse(1.0, 2.0, 3.0));
}

TEST(EllipseBadInput, LengthErrorKeepsWhatWasRead)
{
    const QByteArray body = bodyOf(samples::ellipse().GetBinaryRepresentationAsQByteArray());
    {
        testsupport::BinaryReader reader(body);
        Ellipse e;
        EXPECT_THROW_MESSAGE(e.SetBinary(reader.stream, body.size() - 1), BinaryParsingException,
                             "Ellipse" + lengthErrorTail);
        EXPECT_TRUE(e.IsMinRadiusSet());
        EXPECT_EQ(120.5, e.GetMinRadius());
    }
    {
        testsupport::BinaryReader reader(body);
        Ellipse e;
        EXPECT_THROW_MESSAGE(e.SetBinary(reader.stream, body.size() + 1), BinaryParsingException,
                             "Ellipse" + lengthErrorTail);
        EXPECT_EQ(-33.75, e.GetRotation());
    }
    {
        testsupport::BinaryReader reader(body);
        Ellipse e;
        EXPECT_THROW_MESSAGE(e.SetBinary(reader.stream, -8), BinaryParsingException, "Ellipse" + lengthErrorTail);
        EXPECT_FALSE(e.IsMinRadiusSet());
    }
    {
        testsupport::BinaryReader reader(body);
        Ellipse e;
        EXPECT_NO_THROW(e.SetBinary(reader.stream, 0));
        EXPECT_FALSE(e.AnyData());
    }
}

TEST(ProfileDataBadInput, UnknownElementsAndTagsSkipped)
{
    Profile_Data p;
    ASSERT_TRUE(p.SetXmlString("<Profile_Data><Foo><SignalClass>no</SignalClass></Foo><SignalClass>yes</SignalClass>"
                               "<Class/><ProfileID>id</ProfileID></Profile_Data>",
                               true));
    EXPECT_EQ(QString("yes"), p.GetSignalClass());
    EXPECT_EQ(QString("id"), p.GetProfileID());

    QByteArray rep = representation(Profile_Data::GetId(), frame(TagSignalClass, utf8Value("a"))
                                                               + frame(0x01020304u, QByteArray(7, 'z'))
                                                               + frame(TagPriority, utf8Value("b")));
    Profile_Data b;
    ASSERT_TRUE(b.SetBinaryRepresentation(rep));
    EXPECT_EQ(QString("a"), b.GetSignalClass());
    EXPECT_EQ(QString("b"), b.GetPriority());
    EXPECT_FALSE(b.IsProfileIDSet());

    PointOfInterest point;
    ASSERT_TRUE(point.SetXmlString("<PointOfInterest><Circle>1</Circle><Radius>2.00</Radius></PointOfInterest>", true));
    EXPECT_EQ(2.0, point.GetRadius());
    Ellipse e;
    ASSERT_TRUE(e.SetXmlString("<Ellipse><Angle>1</Angle><Rotation>4.00</Rotation></Ellipse>", true));
    EXPECT_EQ(4.0, e.GetRotation());
}

TEST(EllipseBadInput, NumbersThatAreNone)
{
    Ellipse e;
    ASSERT_TRUE(e.SetXmlString("<Ellipse><MinRadius>abc</MinRadius><MaxRadius>1e3</MaxRadius><Rotation></Rotation></Ellipse>", true));
    EXPECT_TRUE(e.IsMinRadiusSet());
    EXPECT_EQ(0.0, e.GetMinRadius());
    EXPECT_EQ(1000.0, e.GetMaxRadius());
    EXPECT_TRUE(e.IsRotationSet());
    EXPECT_EQ(0.0, e.GetRotation());

    QByteArray rep = representation(Ellipse::GetId(), frame(TagMinRadius, utf8Value("wide")));
    Ellipse b;
    ASSERT_TRUE(b.SetBinaryRepresentation(rep));
    EXPECT_TRUE(b.IsMinRadiusSet());
    EXPECT_EQ(0.0, b.GetMinRadius());

    PointOfInterest p;
    ASSERT_TRUE(p.SetXmlString("<PointOfInterest><Radius>far</Radius></PointOfInterest>", true));
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Radius, p.GetChoicePointOfInterest());
    EXPECT_EQ(0.0, p.GetRadius());

    // A text that is no number reads as 0, which is inside the range.
    PointOfInterestLocation l;
    ASSERT_TRUE(l.SetXmlString("<Location><Longitude>east</Longitude></Location>", true));
    EXPECT_TRUE(l.IsLongitudeSet());
    EXPECT_EQ(0.0, l.GetLongitude());
}

TEST(PointOfInterestBadInput, OutOfRangeTextKeepsTheRecord)
{
    const QString doc = "<PointOfInterest><DisplayName>new</DisplayName><Location><Longitude>1.000000</Longitude>"
                        "<Latitude>91.000000</Latitude></Location><Radius>1.00</Radius></PointOfInterest>";
    PointOfInterest strict = otherPoint();
    EXPECT_THROW_MESSAGE(strict.SetXmlString(doc, true), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'Location'.");
    EXPECT_TRUE(strict == otherPoint());
    EXPECT_EQ(PointChoice::ChoicePointOfInterest_Ellipse, strict.GetChoicePointOfInterest());
    PointOfInterest quiet = otherPoint();
    EXPECT_FALSE(quiet.SetXmlString(doc));
    EXPECT_TRUE(quiet == otherPoint());

    PointOfInterest lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetXmlString(doc, true));
    EXPECT_EQ(91.0, lax.GetLocation().GetLatitude());

    PointOfInterestLocation where = samples::pointLocation(1.0, 2.0);
    QByteArray rep = representation(PointOfInterestLocation::GetId(), frame(TagLongitude, utf8Value("5.000000"))
                                                                          + frame(TagLongitude, utf8Value("-200.000000")));
    EXPECT_FALSE(where.SetBinaryRepresentation(rep));
    EXPECT_TRUE(where == samples::pointLocation(1.0, 2.0));
}

TEST(ProfileDataBadInput, IncompletePointInDocument)
{
    // With validation on, a point without a branch cannot be appended.
    const QString doc = "<Profile_Data><SignalClass>s</SignalClass><PointOfInterest><Location><Longitude>1.000000"
                        "</Longitude><Latitude>2.000000</Latitude></Location></PointOfInterest></Profile_Data>";
    Profile_Data strict = otherProfile();
    EXPECT_THROW_MESSAGE(strict.SetXmlString(doc, true), IncompleteDefinitionException,
                         "Profile_Data: Tried to append not completely defined or invalid item PointOfInterest.");
    EXPECT_TRUE(strict == otherProfile());
    Profile_Data lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetXmlString(doc, true));
    const Profile_Data &view = lax;
    ASSERT_EQ(1, view.GetPointOfInterest().size());
    EXPECT_EQ(-1, int(view.GetPointOfInterest().at(0).GetChoicePointOfInterest()));
}

TEST(ProfileDataBadInput, BrokenXmlKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::profileData(), otherProfile());
    for (const char *doc : {"<Profile_Data><SignalClass>a</Signal></Profile_Data>", "<Profile_Data><SignalClass>a",
                            "<Profile_Data><SignalClass>a</SignalClass></Profile_Data><Extra/>", "",
                            "<Profile><SignalClass>a</SignalClass></Profile>", "<Profile_Data>&bogus;</Profile_Data>"}) {
        Profile_Data p = otherProfile();
        EXPECT_FALSE(p.SetXmlString(doc, true)) << doc;
        EXPECT_TRUE(p == otherProfile()) << doc;
    }
}

TEST(PointOfInterestBadInput, BrokenXmlKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::radiusPoint(), otherPoint());
    expectBrokenXmlKeepsRecord(samples::ellipsePoint(), otherPoint());
}

TEST(EllipseBadInput, BrokenXmlKeepsTheRecord)
{
    expectBrokenXmlKeepsRecord(samples::ellipse(), samples::ellipse(1.0, 2.0, 3.0));
    expectBrokenXmlKeepsRecord(samples::pointLocation(-180.0, 90.0), samples::pointLocation(1.0, 2.0));
}
