// The XML form of records: what GetXml writes, what ProcessXml reads, and the
// text entry points of the object base.

#include "testsupport.h"

using namespace Morvane;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;
using testsupport::throwsWith;
using testsupport::XmlReader;
using testsupport::xmlOf;

// --- writing ----------------------------------------------------------------------------

TEST(Xml, CoordinateWithNothingSetThrowsFromCheckAndWritesNothing)
{
    QString text;
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("Parent"));
    writer.writeTextElement(QStringLiteral("Before"), QStringLiteral("x"));
    const QString before = text;

    Coordinate c;
    ASSERT_TRUE(c.GetValidate());
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.GetXml(writer); },
                                                QStringLiteral("Coordinate: Please set Longitude properly.")));
    EXPECT_EQ(before, text);
    EXPECT_FALSE(text.contains(QStringLiteral("Coordinate")));
}

TEST(Xml, CoordinateWithNothingSetAndValidationOffWritesZeros)
{
    Coordinate c;
    c.SetValidate(false);
    EXPECT_EQ(QStringLiteral("<Coordinate><Longitude>0.000000</Longitude><Latitude>0.000000</Latitude></Coordinate>"),
              xmlOf(c));
}

TEST(Xml, CoordinateTextForm)
{
    EXPECT_EQ(QStringLiteral("<Coordinate><Longitude>16.370000</Longitude><Latitude>48.200000</Latitude></Coordinate>"),
              xmlOf(samples::coordinate(16.37, 48.2)));
    EXPECT_EQ(QStringLiteral("<Coordinate><Longitude>-1.000000</Longitude><Latitude>0.123457</Latitude></Coordinate>"),
              xmlOf(samples::coordinate(-1.0, 0.1234567)));
    EXPECT_EQ(QString::fromUtf8(testsupport::dataFile("coordinate.xml")), samples::coordinate(16.37, 48.2).GetXmlString());
}

TEST(Xml, TargetareasWithoutAreaThrowsFromCheck)
{
    Targetareas t;
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { t.GetXml(writer); },
                                                QStringLiteral("Targetareas: Please set Area properly.")));
    EXPECT_TRUE(text.isEmpty());
}

TEST(Xml, TargetareasWithAnEmptySetVectorWritesNothing)
{
    Targetareas t;
    t.GetArea();
    ASSERT_TRUE(t.IsAreaSet());
    EXPECT_NO_THROW(t.Check());
    EXPECT_FALSE(t.HasData());
    QString text;
    QXmlStreamWriter writer(&text);
    writer.writeStartElement(QStringLiteral("Parent"));
    const QString before = text;
    EXPECT_NO_THROW(t.GetXml(writer));
    EXPECT_EQ(before, text);
    writer.writeEndElement();
    EXPECT_EQ(QStringLiteral("<Parent/>"), text);
}

TEST(Xml, AreaWritesMembersInTableOrder)
{
    const Area a = samples::area(QStringLiteral("A & B <c>"), {{1.5, -2.25}}, QStringLiteral("id"));
    EXPECT_EQ(QStringLiteral("<Area><Name>A &amp; B &lt;c&gt;</Name>"
                             "<Coordinate><Longitude>1.500000</Longitude><Latitude>-2.250000</Latitude></Coordinate>"
                             "<ScriptID>id</ScriptID></Area>"),
              xmlOf(a));
}

TEST(Xml, UnsetMandatoryStringIsWrittenEmptyWithValidationOff)
{
    Area a;
    a.SetValidate(false);
    EXPECT_EQ(QStringLiteral("<Area><Name></Name></Area>"), xmlOf(a));
}

TEST(Xml, IncompleteRecordThatPassesCheckIsDroppedWithoutAWord)
{
    // An Area whose vector is set but empty passes Check and has no data.
    Area hollow;
    hollow.SetName(QStringLiteral("hollow"));
    hollow.GetCoordinate();
    EXPECT_NO_THROW(hollow.Check());
    EXPECT_TRUE(xmlOf(hollow).isEmpty());
}

TEST(Xml, IncompleteElementOfAVectorThrowsWithValidationOn)
{
    Area hollow;
    hollow.SetName(QStringLiteral("hollow"));
    hollow.GetCoordinate();
    Targetareas t;
    t.SetValidate(false);
    t.AppendArea(hollow);
    t.SetValidate(true);
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_TRUE(throwsWith<IncompleteDefinitionException>(
        [&] { t.GetXml(writer); }, QStringLiteral("Parameters for Area are not set properly in 'Targetareas'.")));
}

// --- reading ----------------------------------------------------------------------------

TEST(Xml, EmptyElementOfAStringGivesASetEmptyString)
{
    Area a;
    XmlReader xml(QStringLiteral("<Area><Name/><Coordinate><Longitude>1</Longitude><Latitude>2</Latitude></Coordinate>"
                                 "<ScriptID></ScriptID></Area>"));
    a.ProcessXml(xml.reader);
    EXPECT_TRUE(a.IsNameSet());
    EXPECT_TRUE(a.GetName().isEmpty());
    EXPECT_FALSE(a.GetName().isNull());
    EXPECT_TRUE(a.IsScriptIDSet());
    EXPECT_FALSE(a.GetScriptID().isNull());
    EXPECT_TRUE(a.HasData());
}

TEST(Xml, EmptyElementOfABoolGivesTheDefaultSlot)
{
    SignalLength s;
    s.SetUse(false);
    XmlReader xml(QStringLiteral("<SignalLength><Use></Use></SignalLength>"));
    s.ProcessXml(xml.reader);
    EXPECT_TRUE(s.IsUseSet());
    EXPECT_TRUE(s.GetUse());

    SignalLength other;
    other.SetDefaultUse(false);
    other.SetUse(true);
    XmlReader xml2(QStringLiteral("<SignalLength><Use/></SignalLength>"));
    other.ProcessXml(xml2.reader);
    EXPECT_TRUE(other.IsUseSet());
    EXPECT_FALSE(other.GetUse());
}

TEST(Xml, EmptyElementOfANumberGivesZero)
{
    Coordinate c = samples::coordinate(5.0, 6.0);
    XmlReader xml(QStringLiteral("<Coordinate><Longitude></Longitude><Latitude/></Coordinate>"));
    c.ProcessXml(xml.reader);
    EXPECT_TRUE(c.IsLongitudeSet());
    EXPECT_EQ(0.0, c.GetLongitude());
    EXPECT_TRUE(c.IsLatitudeSet());
    EXPECT_EQ(0.0, c.GetLatitude());
}

TEST(Xml, RepeatedElementLastOneWins)
{
    Coordinate c;
    XmlReader xml(QStringLiteral("<Coordinate><Longitude>1.5</Longitude><Latitude>2</Latitude>"
                                 "<Longitude>-7.25</Longitude></Coordinate>"));
    c.ProcessXml(xml.reader);
    EXPECT_EQ(-7.25, c.GetLongitude());
    EXPECT_EQ(2.0, c.GetLatitude());
}

TEST(Xml, ReadingMergesIntoWhatTheRecordHolds)
{
    Coordinate c;
    c.SetLatitude(33.0);
    XmlReader xml(QStringLiteral("<Coordinate><Longitude>11</Longitude></Coordinate>"));
    c.ProcessXml(xml.reader);
    EXPECT_EQ(11.0, c.GetLongitude());
    EXPECT_EQ(33.0, c.GetLatitude());
    EXPECT_TRUE(c.HasData());

    // Repeated items are appended to those already there.
    Area a = samples::area(QStringLiteral("a"), {{1.0, 1.0}});
    XmlReader xml2(QStringLiteral("<Area><Coordinate><Longitude>2</Longitude><Latitude>2</Latitude></Coordinate></Area>"));
    a.ProcessXml(xml2.reader);
    EXPECT_EQ(2, static_cast<const Area &>(a).GetCoordinate().size());
    EXPECT_EQ(QStringLiteral("a"), a.GetName());
}

TEST(Xml, SetXmlStringStartsFromWhatTheRecordHolds)
{
    Coordinate c;
    c.SetLatitude(33.0);
    ASSERT_TRUE(c.SetXmlString(QStringLiteral("<Coordinate><Longitude>11</Longitude></Coordinate>")));
    EXPECT_EQ(samples::coordinate(11.0, 33.0), c);
}

TEST(Xml, ReaderStopsOnTheEndElementOfTheObject)
{
    XmlReader xml(QStringLiteral("<Root><Coordinate><Longitude>1</Longitude><!-- note -->text<Latitude>2</Latitude>"
                                 "</Coordinate><Next>3</Next></Root>"));
    ASSERT_EQ(QStringLiteral("Root"), xml.reader.name().toString());
    xml.reader.readNextStartElement();
    ASSERT_EQ(QStringLiteral("Coordinate"), xml.reader.name().toString());
    Coordinate c;
    c.ProcessXml(xml.reader);
    EXPECT_EQ(samples::coordinate(1.0, 2.0), c);
    EXPECT_TRUE(xml.reader.isEndElement());
    EXPECT_EQ(QStringLiteral("Coordinate"), xml.reader.name().toString());
    ASSERT_TRUE(xml.reader.readNextStartElement());
    EXPECT_EQ(QStringLiteral("Next"), xml.reader.name().toString());
}

TEST(Xml, NestedTreeStopsAtItsOwnEndElement)
{
    const QString inner = xmlOf(samples::targetareas());
    XmlReader xml(QStringLiteral("<Root>") + inner + QStringLiteral("<After/></Root>"));
    xml.reader.readNextStartElement();
    Targetareas t;
    t.ProcessXml(xml.reader);
    EXPECT_EQ(samples::targetareas(), t);
    EXPECT_TRUE(xml.reader.isEndElement());
    EXPECT_EQ(QStringLiteral("Targetareas"), xml.reader.name().toString());
    ASSERT_TRUE(xml.reader.readNextStartElement());
    EXPECT_EQ(QStringLiteral("After"), xml.reader.name().toString());
}

TEST(Xml, OutOfRangeValueThrowsWithValidationOnAndIsStoredWithValidationOff)
{
    const QString text = QStringLiteral("<Coordinate><Longitude>200</Longitude><Latitude>1</Latitude></Coordinate>");
    Coordinate strict;
    XmlReader xml(text);
    EXPECT_TRUE(throwsWith<OutOfRangeException>(
        [&] { strict.ProcessXml(xml.reader); },
        QStringLiteral("Parameters for m_longitude are not set within range (-180, 180) in 'Coordinate'.")));

    Coordinate lenient;
    lenient.SetValidate(false);
    ASSERT_TRUE(lenient.SetXmlString(text));
    EXPECT_EQ(200.0, lenient.GetLongitude());
    EXPECT_TRUE(lenient.IsLongitudeSet());
}

TEST(Xml, IncompleteItemThrowsFromAppendWithValidationOn)
{
    const QString text = QStringLiteral("<Area><Name>n</Name><Coordinate><Longitude>1</Longitude></Coordinate></Area>");
    Area strict;
    XmlReader xml(text);
    EXPECT_TRUE(throwsWith<IncompleteDefinitionException>(
        [&] { strict.ProcessXml(xml.reader); },
        QStringLiteral("Area: Tried to append not completely defined or invalid item Coordinate.")));
    // What had been read stays.
    EXPECT_EQ(QStringLiteral("n"), strict.GetName());

    Area lenient;
    lenient.SetValidate(false);
    ASSERT_TRUE(lenient.SetXmlString(text));
    ASSERT_EQ(1, static_cast<const Area &>(lenient).GetCoordinate().size());
    EXPECT_FALSE(static_cast<const Area &>(lenient).GetCoordinate().at(0).IsLatitudeSet());
}

TEST(Xml, ScratchItemsDoNotLeakFromOneItemIntoTheNext)
{
    Area a;
    a.SetValidate(false);
    ASSERT_TRUE(a.SetXmlString(QStringLiteral("<Area><Name>n</Name>"
                                              "<Coordinate><Longitude>1</Longitude><Latitude>2</Latitude></Coordinate>"
                                              "<Coordinate><Longitude>3</Longitude></Coordinate></Area>")));
    const Area &view = a;
    ASSERT_EQ(2, view.GetCoordinate().size());
    EXPECT_TRUE(view.GetCoordinate().at(0).HasData());
    EXPECT_EQ(3.0, view.GetCoordinate().at(1).GetLongitude());
    EXPECT_FALSE(view.GetCoordinate().at(1).IsLatitudeSet());
}

TEST(Xml, SetXmlStringWithAnotherRootGivesFalse)
{
    Coordinate c = samples::coordinate(1.0, 2.0);
    EXPECT_FALSE(c.SetXmlString(QStringLiteral("<Area><Name>x</Name></Area>")));
    EXPECT_FALSE(c.SetXmlString(QString()));
    EXPECT_FALSE(c.SetXmlString(QStringLiteral("just text")));
    EXPECT_EQ(samples::coordinate(1.0, 2.0), c);
}

TEST(Xml, SetXmlStringRethrowsWhenAsked)
{
    const QString text = QStringLiteral("<Coordinate><Longitude>1</Longitude><Latitude>99</Latitude></Coordinate>");
    Coordinate c = samples::coordinate(3.0, 4.0);
    EXPECT_FALSE(c.SetXmlString(text));
    EXPECT_EQ(samples::coordinate(3.0, 4.0), c);
    EXPECT_TRUE(throwsWith<OutOfRangeException>(
        [&] { c.SetXmlString(text, true); },
        QStringLiteral("Parameters for m_latitude are not set within range (-90, 90) in 'Coordinate'.")));
    EXPECT_EQ(samples::coordinate(3.0, 4.0), c);
}

TEST(Xml, FailedReadHalfwayLeavesTheRecordAsItWas)
{
    // The first area is read, the second has a latitude out of range.
    const QString text = QStringLiteral(
        "<Targetareas><Area><Name>first</Name><Coordinate><Longitude>1</Longitude><Latitude>1</Latitude></Coordinate>"
        "</Area><Area><Name>second</Name><Coordinate><Longitude>1</Longitude><Latitude>91</Latitude></Coordinate>"
        "</Area></Targetareas>");
    Targetareas t = samples::otherTargetareas();
    const QByteArray before = testsupport::unvalidatedBinary(t);
    EXPECT_FALSE(t.SetXmlString(text));
    EXPECT_EQ(samples::otherTargetareas(), t);
    EXPECT_EQ(before, testsupport::unvalidatedBinary(t));

    // ProcessXml itself keeps what it read before the failure.
    Targetareas direct = samples::otherTargetareas();
    XmlReader xml(text);
    EXPECT_THROW(direct.ProcessXml(xml.reader), OutOfRangeException);
    const Targetareas &view = direct;
    ASSERT_EQ(2, view.GetArea().size());
    EXPECT_EQ(QStringLiteral("first"), view.GetArea().at(1).GetName());
}

TEST(Xml, CommentsProcessingInstructionsAndCdataAreNoChildren)
{
    Area a;
    ASSERT_TRUE(a.SetXmlString(QStringLiteral(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- areas -->\n<Area>\n  <!-- c --><?pi x?>\n"
        "  <Name><![CDATA[a <b>]]></Name>\n"
        "  <Coordinate><Longitude> 1.25 </Longitude><Latitude>2</Latitude></Coordinate>\n</Area>\n")));
    EXPECT_EQ(QStringLiteral("a <b>"), a.GetName());
    ASSERT_EQ(1, static_cast<const Area &>(a).GetCoordinate().size());
    EXPECT_EQ(1.25, static_cast<const Area &>(a).GetCoordinate().at(0).GetLongitude());
}

TEST(Xml, WrittenTextIsReadBackAsItStands)
{
    const Area a = samples::area(QString::fromUtf8("  tab\there & \"quotes\" \xe2\x82\xac  "), {{0.5, 0.5}},
                                 QStringLiteral("<script/>"));
    Area back;
    ASSERT_TRUE(back.SetXmlString(a.GetXmlString()));
    EXPECT_EQ(a, back);
    EXPECT_EQ(a.GetName(), back.GetName());
}
