// The binary form of records: the tag-length-value layout GetBinary writes,
// and what SetBinary reads.

#include "testsupport.h"

using namespace Morvane;
using ORBELIN::BinaryParsingException;
using ORBELIN::OutOfRangeException;
using testsupport::BinaryReader;
using testsupport::BinaryWriter;
using testsupport::binaryOf;
using testsupport::hex;
using testsupport::throwsWith;

namespace {

const char *const coordinateBody =
    "9a94af47" "0000000d" "00000009" "31362e333730303030"  // Longitude 16.370000
    "c0abd4d1" "0000000d" "00000009" "34382e323030303030"; // Latitude 48.200000

QString lengthError(const char *objectName)
{
    return QLatin1String(objectName)
        + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation");
}

// A member frame of a text value: tag, length, size and the text.
QByteArray textFrame(quint32 tag, const QByteArray &text)
{
    BinaryWriter w;
    w.stream << tag << qint32(4 + text.size()) << text;
    return w.bytes;
}

QByteArray int32(qint32 value)
{
    BinaryWriter w;
    w.stream << value;
    return w.bytes;
}

} // namespace

// --- the layout -----------------------------------------------------------------------

TEST(Binary, WorkedLayoutOfACoordinate)
{
    const Coordinate c = samples::coordinate(16.37, 48.2);
    BinaryWriter writer;
    ASSERT_TRUE(c.GetBinary(writer.stream, 0x3b5f8e43, true));
    EXPECT_EQ(hex("3b5f8e43" "0000002a") + hex(coordinateBody), writer.bytes);
    EXPECT_EQ(50, writer.buffer.pos());
    // The entry point of the base writes the same frame.
    EXPECT_EQ(writer.bytes, c.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(testsupport::dataFile("coordinate.bin"), writer.bytes);
}

TEST(Binary, WorkedLayoutOfACoordinateInsideAnArea)
{
    Area a;
    a.SetName(QStringLiteral("A"));
    a.AppendCoordinate(samples::coordinate(16.37, 48.2));
    const QByteArray expected = hex("87d84a00" "00000047"          // id, body of 71 bytes
                                    "58d44d66" "00000005" "00000001" "41" // Name "A"
                                    "37c195fc" "00000032"          // the vector's tag, 50 bytes
                                    "00000001"                     // one item
                                    "0000002a")                    // its length, no id
        + hex(coordinateBody);
    EXPECT_EQ(expected, binaryOf(a, int(Area::GetId()), true));
    EXPECT_EQ(expected, a.GetBinaryRepresentationAsQByteArray());
}

TEST(Binary, WithoutIdTheFrameStartsWithTheLength)
{
    EXPECT_EQ(hex("0000002a") + hex(coordinateBody), binaryOf(samples::coordinate(16.37, 48.2), 0x12345678, false));
    EXPECT_EQ(hex("12345678" "0000002a") + hex(coordinateBody),
              binaryOf(samples::coordinate(16.37, 48.2), 0x12345678, true));
}

TEST(Binary, WritingAppendsAtTheStreamPosition)
{
    BinaryWriter writer;
    writer.stream << qint32(-1);
    ASSERT_TRUE(samples::coordinate(16.37, 48.2).GetBinary(writer.stream, 0x3b5f8e43, true));
    writer.stream << qint32(-2);
    EXPECT_EQ(hex("ffffffff" "3b5f8e43" "0000002a") + hex(coordinateBody) + hex("fffffffe"), writer.bytes);
}

TEST(Binary, CoordinateWithNothingSetThrowsBeforeAnythingIsWritten)
{
    Coordinate c;
    BinaryWriter writer;
    writer.stream << qint32(7);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { c.GetBinary(writer.stream, 0x3b5f8e43, true); },
                                                QStringLiteral("Coordinate: Please set Longitude properly.")));
    EXPECT_EQ(hex("00000007"), writer.bytes);
    EXPECT_EQ(4, writer.buffer.pos());
}

TEST(Binary, CoordinateWithNothingSetAndValidationOffWritesZeros)
{
    Coordinate c;
    c.SetValidate(false);
    EXPECT_EQ(hex("3b5f8e43" "00000028"
                  "9a94af47" "0000000c" "00000008" "302e303030303030"
                  "c0abd4d1" "0000000c" "00000008" "302e303030303030"),
              binaryOf(c, 0x3b5f8e43, true));
}

TEST(Binary, RecordWithoutDataThatPassesCheckReturnsFalseAndLeavesTheStream)
{
    Targetareas t;
    t.GetArea();
    ASSERT_NO_THROW(t.Check());
    BinaryWriter writer;
    writer.stream << qint32(0x0a0b0c0d);
    EXPECT_FALSE(t.GetBinary(writer.stream, int(Targetareas::GetId()), true));
    EXPECT_FALSE(t.GetBinary(writer.stream, int(Targetareas::GetId()), false));
    EXPECT_EQ(hex("0a0b0c0d"), writer.bytes);
    EXPECT_EQ(4, writer.buffer.pos());

    Area hollow;
    hollow.SetName(QStringLiteral("hollow"));
    hollow.GetCoordinate();
    EXPECT_FALSE(hollow.GetBinary(writer.stream, int(Area::GetId()), true));
    EXPECT_EQ(hex("0a0b0c0d"), writer.bytes);
    EXPECT_TRUE(hollow.GetBinaryRepresentationAsQByteArray().isEmpty());
}

TEST(Binary, EmptyVectorWritesTagLengthFourAndCountZero)
{
    Targetareas t;
    t.SetValidate(false);
    EXPECT_EQ(hex("4cbb9887" "0000000c" "b4a17238" "00000004" "00000000"), binaryOf(t, 0x4cbb9887, true));

    Area a;
    a.SetValidate(false);
    a.SetName(QStringLiteral("n"));
    EXPECT_EQ(hex("87d84a00" "00000019" "58d44d66" "00000005" "00000001" "6e" "37c195fc" "00000004" "00000000"),
              binaryOf(a, int(Area::GetId()), true));
}

TEST(Binary, IncompleteElementWithValidationOnIsCountedButNotWritten)
{
    Area hollow;
    hollow.SetName(QStringLiteral("hollow"));
    hollow.GetCoordinate();
    Targetareas t;
    t.SetValidate(false);
    t.AppendArea(hollow);
    t.SetValidate(true);
    const QByteArray bytes = t.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(hex("4cbb9887" "0000000c" "b4a17238" "00000004" "00000001"), bytes);

    // A reader of that stream fails.
    Targetareas back = samples::otherTargetareas();
    QByteArray copy = bytes;
    EXPECT_FALSE(back.SetBinaryRepresentation(copy));
    EXPECT_EQ(samples::otherTargetareas(), back);
}

TEST(Binary, TextMembersAreUtf8)
{
    Area a;
    a.SetName(QString::fromUtf8("\xc3\xa4"));
    a.AppendCoordinate(samples::coordinate(0.0, 0.0));
    a.SetScriptID(QLatin1String(""));
    const QByteArray bytes = binaryOf(a, int(Area::GetId()), true);
    EXPECT_TRUE(bytes.startsWith(hex("87d84a00")));
    EXPECT_EQ(8 + 14, bytes.indexOf(hex("37c195fc")));
    EXPECT_EQ(hex("58d44d66" "00000006" "00000002" "c3a4"), bytes.mid(8, 14));
    // An empty text is an empty array, not a null one.
    EXPECT_TRUE(bytes.endsWith(hex("5554953f" "00000004" "00000000")));
}

// --- reading ----------------------------------------------------------------------------

TEST(Binary, ReadsTheWorkedLayout)
{
    BinaryReader reader(hex(coordinateBody));
    Coordinate c;
    c.SetBinary(reader.stream, 42);
    EXPECT_EQ(samples::coordinate(16.37, 48.2), c);
    EXPECT_TRUE(reader.stream.atEnd());
}

TEST(Binary, MembersMayComeInAnyOrder)
{
    const QByteArray body = textFrame(0xc0abd4d1u, "-1.5") + textFrame(0x9a94af47u, "2.25");
    BinaryReader reader(body);
    Coordinate c;
    c.SetBinary(reader.stream, body.size());
    EXPECT_EQ(samples::coordinate(2.25, -1.5), c);
}

TEST(Binary, UnknownTagBetweenKnownOnesIsSkipped)
{
    const QByteArray unknown = hex("12345678" "00000006" "aabbccddeeff");
    const QByteArray body = textFrame(0x9a94af47u, "16.370000") + unknown + textFrame(0xc0abd4d1u, "48.200000");
    BinaryReader reader(body);
    Coordinate c;
    c.SetBinary(reader.stream, body.size());
    EXPECT_EQ(samples::coordinate(16.37, 48.2), c);
    EXPECT_TRUE(reader.stream.atEnd());

    // Through the entry point of the base as well, also with an empty unknown
    // frame and one whose tag is that of another record.
    QByteArray framed = hex("3b5f8e43") + int32(body.size() + 8 + 8) + hex("ffffffff" "00000000") + body
        + hex("37c195fc" "00000000");
    Coordinate viaBase;
    ASSERT_TRUE(viaBase.SetBinaryRepresentation(framed));
    EXPECT_EQ(samples::coordinate(16.37, 48.2), viaBase);
}

TEST(Binary, LengthOneByteTooShortThrows)
{
    const QByteArray body = hex(coordinateBody);
    BinaryReader reader(body);
    Coordinate c;
    EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { c.SetBinary(reader.stream, 41); },
                                                    lengthError("Coordinate")));
    QByteArray framed = hex("3b5f8e43" "00000029") + body;
    Coordinate viaBase = samples::coordinate(1.0, 1.0);
    EXPECT_FALSE(viaBase.SetBinaryRepresentation(framed));
    EXPECT_EQ(samples::coordinate(1.0, 1.0), viaBase);
}

TEST(Binary, LengthOneByteTooLongThrows)
{
    const QByteArray body = hex(coordinateBody);
    {
        BinaryReader reader(body);
        Coordinate c;
        EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { c.SetBinary(reader.stream, 43); },
                                                        lengthError("Coordinate")));
    }
    {
        // One more byte is there, but it is no member frame.
        BinaryReader reader(body + hex("00"));
        Coordinate c;
        EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { c.SetBinary(reader.stream, 43); },
                                                       lengthError("Coordinate")));
    }
    QByteArray framed = hex("3b5f8e43" "0000002b") + body;
    Coordinate viaBase = samples::coordinate(1.0, 1.0);
    EXPECT_FALSE(viaBase.SetBinaryRepresentation(framed));
    EXPECT_EQ(samples::coordinate(1.0, 1.0), viaBase);
}

TEST(Binary, LengthErrorKeepsTheMembersAlreadyRead)
{
    BinaryReader reader(hex(coordinateBody));
    Coordinate c;
    EXPECT_THROW(c.SetBinary(reader.stream, 41), BinaryParsingException);
    EXPECT_EQ(16.37, c.GetLongitude());
    EXPECT_TRUE(c.IsLongitudeSet());
}

TEST(Binary, LengthZeroReadsNothing)
{
    BinaryReader reader(hex(coordinateBody));
    Coordinate c = samples::coordinate(1.0, 2.0);
    EXPECT_NO_THROW(c.SetBinary(reader.stream, 0));
    EXPECT_EQ(samples::coordinate(1.0, 2.0), c);
    EXPECT_EQ(0, reader.buffer.pos());
}

TEST(Binary, NegativeLengthThrows)
{
    for (int length : {-1, -42, int(0x80000000)}) {
        BinaryReader reader(hex(coordinateBody));
        Coordinate c = samples::coordinate(1.0, 2.0);
        EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { c.SetBinary(reader.stream, length); },
                                                       lengthError("Coordinate")))
            << length;
        EXPECT_EQ(samples::coordinate(1.0, 2.0), c);
    }
}

TEST(Binary, StreamThatEndsEarlyThrows)
{
    const QByteArray body = hex(coordinateBody);
    for (int cut : {0, 3, 8, 20, 21, 30, 41}) {
        BinaryReader reader(body.left(cut));
        Coordinate c;
        EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { c.SetBinary(reader.stream, 42); },
                                                       lengthError("Coordinate")))
            << cut;
    }
}

TEST(Binary, LengthErrorInANestedRecordNamesThatRecord)
{
    // The item's length says 41 while its body holds 42 bytes.
    const QByteArray body = hex("37c195fc" "00000032" "00000001" "00000029") + hex(coordinateBody);
    BinaryReader reader(body);
    Area a;
    EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { a.SetBinary(reader.stream, body.size()); },
                                                   lengthError("Coordinate")));
}

TEST(Binary, ReadingAppendsItemsToTheVector)
{
    Area a = samples::area(QStringLiteral("keep"), {{1.0, 1.0}});
    const QByteArray body = hex("37c195fc" "00000032" "00000001" "0000002a") + hex(coordinateBody);
    BinaryReader reader(body);
    a.SetBinary(reader.stream, body.size());
    const Area &view = a;
    ASSERT_EQ(2, view.GetCoordinate().size());
    EXPECT_EQ(samples::coordinate(16.37, 48.2), view.GetCoordinate().at(1));
    EXPECT_EQ(QStringLiteral("keep"), a.GetName());
}

TEST(Binary, OutOfRangeValueThrowsWithValidationOnAndIsStoredWithValidationOff)
{
    const QByteArray body = textFrame(0x9a94af47u, "181.000000") + textFrame(0xc0abd4d1u, "0.000000");
    {
        BinaryReader reader(body);
        Coordinate c;
        EXPECT_TRUE(throwsWith<OutOfRangeException>(
            [&] { c.SetBinary(reader.stream, body.size()); },
            QStringLiteral("Parameters for m_longitude are not set within range (-180, 180) in 'Coordinate'.")));
    }
    BinaryReader reader(body);
    Coordinate c;
    c.SetValidate(false);
    c.SetBinary(reader.stream, body.size());
    EXPECT_EQ(181.0, c.GetLongitude());
    EXPECT_TRUE(c.IsLongitudeSet());
}

TEST(Binary, FlagOfTheRootReachesItemsBeingRead)
{
    Targetareas t;
    t.SetValidate(false);
    Area a;
    a.SetValidate(false);
    a.SetName(QStringLiteral("a"));
    Coordinate c;
    c.SetValidate(false);
    c.SetLongitude(-200.0);
    c.SetLatitude(300.0);
    a.AppendCoordinate(c);
    t.AppendArea(a);
    QByteArray bytes = t.GetBinaryRepresentationAsQByteArray();

    Targetareas lenient;
    lenient.SetValidate(false);
    ASSERT_TRUE(lenient.SetBinaryRepresentation(bytes));
    EXPECT_EQ(t, lenient);
    EXPECT_EQ(300.0, static_cast<const Targetareas &>(lenient).GetArea().at(0).GetCoordinate().at(0).GetLatitude());
}

TEST(Binary, SetBinaryRepresentationRefusesAnotherRecordsId)
{
    QByteArray bytes = samples::coordinate(1.0, 2.0).GetBinaryRepresentationAsQByteArray();
    Area a = samples::area(QStringLiteral("a"), {{3.0, 4.0}});
    EXPECT_FALSE(a.SetBinaryRepresentation(bytes));
    EXPECT_EQ(samples::area(QStringLiteral("a"), {{3.0, 4.0}}), a);
}

TEST(Binary, GoldenCoordinate)
{
    QByteArray golden = testsupport::dataFile("coordinate.bin");
    EXPECT_EQ(golden, samples::coordinate(16.37, 48.2).GetBinaryRepresentationAsQByteArray());
    Coordinate back;
    ASSERT_TRUE(back.SetBinaryRepresentation(golden));
    EXPECT_EQ(samples::coordinate(16.37, 48.2), back);
}
