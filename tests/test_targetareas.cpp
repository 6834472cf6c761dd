// Target areas: Coordinate, Area and Targetareas as a tree, in memory, as XML
// and binary text, and through files.

#include "testsupport.h"

#include <QtCore/QTemporaryDir>

using namespace Morvane;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;
using testsupport::throwsWith;

TEST(Targetareas, CoordinateRangesAreClosed)
{
    Coordinate c;
    ASSERT_TRUE(c.GetValidate());
    EXPECT_NO_THROW(c.SetLongitude(-180.0));
    EXPECT_NO_THROW(c.SetLatitude(-90.0));
    EXPECT_NO_THROW(c.Check());
    EXPECT_EQ(-180.0, c.GetLongitude());
    EXPECT_EQ(-90.0, c.GetLatitude());
    EXPECT_NO_THROW(c.SetLongitude(180.0));
    EXPECT_NO_THROW(c.SetLatitude(90.0));
    EXPECT_NO_THROW(c.Check());
    EXPECT_EQ(180.0, c.GetLongitude());
    EXPECT_EQ(90.0, c.GetLatitude());
    EXPECT_TRUE(c.IsValidLongitude(-180.0) && c.IsValidLongitude(180.0));
    EXPECT_TRUE(c.IsValidLatitude(-90.0) && c.IsValidLatitude(90.0));
    EXPECT_FALSE(c.IsValidLongitude(-180.000001) || c.IsValidLongitude(180.000001));
    EXPECT_FALSE(c.IsValidLatitude(-90.000001) || c.IsValidLatitude(90.000001));

    // The bounds also come back from both written forms.
    const Coordinate bounds = samples::coordinate(-180.0, 90.0);
    Coordinate fromXml;
    ASSERT_TRUE(fromXml.SetXmlString(bounds.GetXmlString()));
    EXPECT_EQ(bounds, fromXml);
    Coordinate fromBinary;
    QByteArray bytes = bounds.GetBinaryRepresentationAsQByteArray();
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(bytes));
    EXPECT_EQ(bounds, fromBinary);
}

TEST(Targetareas, AreaRefusesToAppendAHalfCoordinate)
{
    Area a;
    ASSERT_TRUE(a.GetValidate());
    Coordinate onlyLongitude;
    onlyLongitude.SetLongitude(16.0);
    EXPECT_TRUE(throwsWith<IncompleteDefinitionException>(
        [&] { a.AppendCoordinate(onlyLongitude); },
        QStringLiteral("Area: Tried to append not completely defined or invalid item Coordinate.")));
    Coordinate onlyLatitude;
    onlyLatitude.SetLatitude(48.0);
    EXPECT_TRUE(throwsWith<IncompleteDefinitionException>(
        [&] { a.AppendCoordinate(onlyLatitude); },
        QStringLiteral("Area: Tried to append not completely defined or invalid item Coordinate.")));
    EXPECT_TRUE(static_cast<const Area &>(a).GetCoordinate().isEmpty());
    EXPECT_FALSE(a.IsCoordinateSet());

    onlyLatitude.SetLongitude(16.0);
    a.AppendCoordinate(onlyLatitude);
    EXPECT_EQ(1, static_cast<const Area &>(a).GetCoordinate().size());
}

TEST(Targetareas, RefusesToAppendAnIncompleteArea)
{
    Targetareas t;
    Area a;
    a.SetName(QStringLiteral("no corners"));
    EXPECT_TRUE(throwsWith<IncompleteDefinitionException>(
        [&] { t.AppendArea(a); },
        QStringLiteral("Targetareas: Tried to append not completely defined or invalid item Area.")));
    EXPECT_FALSE(t.IsAreaSet());
}

TEST(Targetareas, CheckWithoutAreaNamesArea)
{
    Targetareas t;
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { t.Check(); },
                                                QStringLiteral("Targetareas: Please set Area properly.")));
    t.SetValidate(false);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { t.Check(true); },
                                                QStringLiteral("Targetareas: Please set Area properly.")));
    t.AppendArea(samples::area(QStringLiteral("a"), {{1.0, 1.0}}));
    EXPECT_NO_THROW(t.Check());
}

// --- written and read back ---------------------------------------------------------------

TEST(Targetareas, XmlRoundTrip)
{
    const Targetareas t = samples::targetareas();
    Targetareas back;
    ASSERT_TRUE(back.SetXmlString(t.GetXmlString()));
    EXPECT_TRUE(back == t);
    const Targetareas &view = back;
    ASSERT_EQ(3, view.GetArea().size());
    EXPECT_EQ(QString::fromUtf8("Wien \xe2\x80\x93 S\xc3\xbc\x64"), view.GetArea().at(0).GetName());
    EXPECT_EQ(QStringLiteral("vienna-1"), view.GetArea().at(0).GetScriptID());
    EXPECT_TRUE(view.GetArea().at(1).IsScriptIDSet());
    EXPECT_TRUE(view.GetArea().at(1).GetScriptID().isEmpty());
    EXPECT_FALSE(view.GetArea().at(1).GetScriptID().isNull());
    EXPECT_FALSE(view.GetArea().at(2).IsScriptIDSet());
    EXPECT_EQ(-0.000001, view.GetArea().at(2).GetCoordinate().at(0).GetLatitude());
    // Written again, the text is the same.
    EXPECT_EQ(t.GetXmlString(), back.GetXmlString());
}

TEST(Targetareas, BinaryRoundTrip)
{
    const Targetareas t = samples::targetareas();
    QByteArray bytes = t.GetBinaryRepresentationAsQByteArray();
    Targetareas back;
    ASSERT_TRUE(back.SetBinaryRepresentation(bytes));
    EXPECT_TRUE(back == t);
    EXPECT_TRUE(back.IsAreaSet());
    EXPECT_EQ(t.GetBinaryRepresentationAsQByteArray(), back.GetBinaryRepresentationAsQByteArray());
    const Targetareas &view = back;
    EXPECT_TRUE(view.GetArea().at(1).IsScriptIDSet());
    EXPECT_FALSE(view.GetArea().at(1).GetScriptID().isNull());
}

TEST(Targetareas, BinaryRoundTripOnAnApplicationStream)
{
    const Targetareas t = samples::targetareas();
    testsupport::BinaryWriter writer;
    writer.stream << qint32(0x01020304);
    t.GetBinaryRepresentation(writer.stream);
    writer.stream << qint32(0x05060708);

    testsupport::BinaryReader reader(writer.bytes);
    qint32 before = 0;
    reader.stream >> before;
    Targetareas back;
    ASSERT_TRUE(back.SetBinaryRepresentation(reader.stream));
    EXPECT_EQ(t, back);
    // The stream stands right behind the record.
    qint32 after = 0;
    reader.stream >> after;
    EXPECT_EQ(0x05060708, after);
}

TEST(Targetareas, GoldenBinary)
{
    const QByteArray golden = testsupport::dataFile("targetareas.bin");
    EXPECT_EQ(golden, samples::targetareas().GetBinaryRepresentationAsQByteArray());
    Targetareas back;
    QByteArray bytes = golden;
    ASSERT_TRUE(back.SetBinaryRepresentation(bytes));
    EXPECT_EQ(samples::targetareas(), back);
}

TEST(Targetareas, GoldenXml)
{
    const QString golden = QString::fromUtf8(testsupport::dataFile("targetareas.xml"));
    EXPECT_EQ(golden, samples::targetareas().GetXmlString());
    Targetareas back;
    ASSERT_TRUE(back.SetXmlString(golden));
    EXPECT_EQ(samples::targetareas(), back);
}

TEST(Targetareas, XmlFileRoundTrip)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("areas.xml"));
    const Targetareas t = samples::targetareas();
    ASSERT_TRUE(t.SaveXml(path));

    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    file.close();
    // The file is UTF-8 and holds what GetXml writes.
    EXPECT_TRUE(content.contains(QByteArray("<Name>Wien \xe2\x80\x93 S\xc3\xbc\x64</Name>")));
    EXPECT_EQ(testsupport::dataFile("targetareas.xml").count("<Coordinate>"), content.count("<Coordinate>"));

    Targetareas byName;
    ASSERT_TRUE(byName.LoadXml(path));
    EXPECT_EQ(t, byName);

    Targetareas byFile;
    QFile open(path);
    ASSERT_TRUE(open.open(QIODevice::ReadOnly));
    ASSERT_TRUE(byFile.LoadXml(&open));
    EXPECT_EQ(t, byFile);
}

TEST(Targetareas, BinaryFileRoundTrip)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("areas.bin"));
    const Targetareas t = samples::targetareas();
    {
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        const QByteArray bytes = t.GetBinaryRepresentationAsQByteArray();
        ASSERT_EQ(bytes.size(), out.write(bytes));
    }
    QFile in(path);
    Targetareas back;
    ASSERT_TRUE(back.LoadBinary(&in));
    EXPECT_EQ(t, back);

    QFile again(path);
    ASSERT_TRUE(again.open(QIODevice::ReadOnly));
    Targetareas fromOpen;
    ASSERT_TRUE(fromOpen.LoadBinary(&again));
    EXPECT_EQ(t, fromOpen);
}

TEST(Targetareas, MissingFilesAreReportedAsFalse)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString missing = dir.filePath(QStringLiteral("missing.xml"));
    Targetareas t = samples::otherTargetareas();
    EXPECT_FALSE(t.LoadXml(missing));
    QFile file(missing);
    EXPECT_FALSE(t.LoadBinary(&file));
    EXPECT_FALSE(t.LoadXml(static_cast<QFile *>(nullptr)));
    EXPECT_FALSE(t.LoadBinary(nullptr));
    EXPECT_EQ(samples::otherTargetareas(), t);
    EXPECT_FALSE(t.SaveXml(dir.filePath(QStringLiteral("no/such/folder/areas.xml"))));
}

TEST(Targetareas, SaveXmlOfAnIncompleteTreeThrowsAndLeavesTheFileAlone)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("areas.xml"));
    ASSERT_TRUE(samples::otherTargetareas().SaveXml(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();

    Targetareas empty;
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { empty.SaveXml(path); },
                                                QStringLiteral("Targetareas: Please set Area properly.")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(before, file.readAll());
}

TEST(Targetareas, ValidationOffWritesAndReadsWhatValidationOnRefuses)
{
    Targetareas t;
    t.SetValidate(false);
    Area a;
    a.SetValidate(false);
    a.SetName(QStringLiteral("wide"));
    Coordinate c;
    c.SetValidate(false);
    c.SetLongitude(200.0);
    c.SetLatitude(-100.0);
    a.AppendCoordinate(c);
    t.AppendArea(a);

    const QString xml = t.GetXmlString();
    EXPECT_TRUE(xml.contains(QStringLiteral("<Longitude>200.000000</Longitude>")));

    Targetareas lenient;
    lenient.SetValidate(false);
    ASSERT_TRUE(lenient.SetXmlString(xml));
    EXPECT_EQ(t, lenient);

    Targetareas strict = samples::otherTargetareas();
    EXPECT_FALSE(strict.SetXmlString(xml));
    EXPECT_EQ(samples::otherTargetareas(), strict);

    QByteArray bytes = t.GetBinaryRepresentationAsQByteArray();
    Targetareas lenientBinary;
    lenientBinary.SetValidate(false);
    ASSERT_TRUE(lenientBinary.SetBinaryRepresentation(bytes));
    EXPECT_EQ(t, lenientBinary);
    Targetareas strictBinary = samples::otherTargetareas();
    EXPECT_FALSE(strictBinary.SetBinaryRepresentation(bytes));
    EXPECT_EQ(samples::otherTargetareas(), strictBinary);
}
