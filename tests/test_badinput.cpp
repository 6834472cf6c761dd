// Damaged input: truncated and over-long binary bodies, lengths and counts
// that do not fit, malformed XML, unknown elements and numbers that are none.
// Each gives its exception or a false result, none crashes, and the bool
// entry points leave the record as it was.

#include "testsupport.h"

#include <random>

using namespace Morvane;
using ORBELIN::BinaryParsingException;
using ORBELIN::ReportException;
using testsupport::BinaryReader;
using testsupport::hex;
using testsupport::throwsWith;
using testsupport::XmlReader;

namespace {

const QString lengthErrorTail =
    QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation");

// The body of a frame: everything behind the id and the length.
QByteArray bodyOf(const QByteArray &frame)
{
    return frame.mid(8);
}

QByteArray withLength(const QByteArray &frame, qint32 length)
{
    QByteArray copy = frame;
    const QByteArray field = hex(QByteArray::number(quint32(length), 16).rightJustified(8, '0').constData());
    copy.replace(4, 4, field);
    return copy;
}

// What a record holds, to compare before and after a failed read.
struct Snapshot
{
    Targetareas record;
    QByteArray bytes;
    QString xml;

    explicit Snapshot(const Targetareas &t)
        : record(t), bytes(testsupport::unvalidatedBinary(t)), xml(testsupport::unvalidatedXml(t))
    {
    }

    ::testing::AssertionResult matches(const Targetareas &t) const
    {
        if (!(record == t))
            return ::testing::AssertionFailure() << "the content changed";
        if (bytes != testsupport::unvalidatedBinary(t))
            return ::testing::AssertionFailure() << "the binary form changed";
        if (xml != testsupport::unvalidatedXml(t))
            return ::testing::AssertionFailure() << "the XML form changed";
        if (record.IsAreaSet() != t.IsAreaSet())
            return ::testing::AssertionFailure() << "the presence bit changed";
        return ::testing::AssertionSuccess();
    }
};

// A Targetareas with defaults in its elements, so that a restore has to
// bring back more than the members that are set.
Targetareas startingPoint()
{
    Targetareas t = samples::otherTargetareas();
    Area &area = t.GetArea()[0];
    area.SetDefaultScriptID(QStringLiteral("default script"));
    Coordinate &corner = area.GetCoordinate()[1];
    corner.SetDefaultLatitude(12.5);
    return t;
}

} // namespace

// --- binary --------------------------------------------------------------------------

TEST(BadBinary, EveryTruncationFailsAndKeepsTheRecord)
{
    const QByteArray full = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    for (int cut = 0; cut < full.size(); ++cut) {
        Targetareas t = startingPoint();
        const Snapshot before(t);
        QByteArray part = full.left(cut);
        EXPECT_FALSE(t.SetBinaryRepresentation(part)) << cut;
        ASSERT_TRUE(before.matches(t)) << "cut at " << cut;
    }
}

TEST(BadBinary, TruncatedBodyThrowsALengthError)
{
    const QByteArray body = bodyOf(samples::targetareas().GetBinaryRepresentationAsQByteArray());
    for (int cut = 0; cut < body.size(); ++cut) {
        BinaryReader reader(body.left(cut));
        Targetareas t;
        try {
            t.SetBinary(reader.stream, body.size());
            ADD_FAILURE() << "nothing thrown for a cut at " << cut;
        } catch (const BinaryParsingException &e) {
            EXPECT_TRUE(e.GetMessage().endsWith(lengthErrorTail)) << e.GetMessage().toStdString();
        } catch (const ReportException &e) {
            ADD_FAILURE() << "cut at " << cut << ": " << e.GetExceptionName().toStdString() << " "
                          << e.GetMessage().toStdString();
        }
    }
}

TEST(BadBinary, OverlongBodyFails)
{
    const QByteArray full = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    const qint32 length = full.size() - 8;
    for (qint32 extra : {1, 2, 4, 8, 100, 0x7fffffff - length}) {
        Targetareas t = startingPoint();
        const Snapshot before(t);
        QByteArray longer = withLength(full, length + extra);
        EXPECT_FALSE(t.SetBinaryRepresentation(longer)) << extra;
        EXPECT_TRUE(before.matches(t));
        // Also when bytes follow that are no member frame.
        QByteArray padded = withLength(full, length + extra) + QByteArray(extra < 100 ? extra : 3, '\x01');
        EXPECT_FALSE(t.SetBinaryRepresentation(padded)) << extra;
        EXPECT_TRUE(before.matches(t));
    }
    BinaryReader reader(bodyOf(full));
    Targetareas direct;
    EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { direct.SetBinary(reader.stream, length + 1); },
                                                   QStringLiteral("Targetareas") + lengthErrorTail));
}

TEST(BadBinary, ShortBodyFails)
{
    const QByteArray full = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    const qint32 length = full.size() - 8;
    for (qint32 less : {1, 2, 4, 8, 100, length - 1}) {
        Targetareas t = startingPoint();
        const Snapshot before(t);
        QByteArray shorter = withLength(full, length - less);
        EXPECT_FALSE(t.SetBinaryRepresentation(shorter)) << less;
        EXPECT_TRUE(before.matches(t));
    }
}

TEST(BadBinary, NegativeLengthsFail)
{
    const QByteArray full = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    for (qint32 length : {-1, -8, -524, qint32(0x80000000)}) {
        Targetareas t = startingPoint();
        const Snapshot before(t);
        QByteArray negative = withLength(full, length);
        EXPECT_FALSE(t.SetBinaryRepresentation(negative)) << length;
        EXPECT_TRUE(before.matches(t));
    }
    // A negative member length inside a body.
    const QByteArray body = hex("9a94af47" "fffffffb" "00000009" "31362e333730303030"
                                "c0abd4d1" "0000000d" "00000009" "34382e323030303030");
    BinaryReader reader(body);
    Coordinate c;
    EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { c.SetBinary(reader.stream, body.size()); },
                                                   QStringLiteral("Coordinate") + lengthErrorTail));
    // A negative length of an unknown member: nothing is skipped.
    const QByteArray unknown = hex("11111111" "fffffff8");
    BinaryReader reader2(unknown);
    Coordinate d;
    EXPECT_THROW(d.SetBinary(reader2.stream, unknown.size()), BinaryParsingException);
}

TEST(BadBinary, HugeLengthsAndSizesFailWithoutAllocating)
{
    const QByteArray bodies[] = {
        hex("11111111" "7fffffff" "00"),                          // unknown member, huge length
        hex("9a94af47" "7fffffff" "7ffffff0" "3132"),              // text of a huge size
        hex("9a94af47" "0000000d" "fffffffe" "31362e333730303030"), // size that is no size
    };
    for (const QByteArray &body : bodies) {
        BinaryReader reader(body);
        Coordinate c;
        EXPECT_THROW(c.SetBinary(reader.stream, body.size()), BinaryParsingException) << body.toHex().constData();
        QByteArray framed = hex("3b5f8e43") + QByteArray::fromHex(
            QByteArray::number(body.size(), 16).rightJustified(8, '0')) + body;
        Coordinate viaBase = samples::coordinate(5.0, 5.0);
        EXPECT_FALSE(viaBase.SetBinaryRepresentation(framed));
        EXPECT_EQ(samples::coordinate(5.0, 5.0), viaBase);
    }
}

TEST(BadBinary, HugeVectorCountFails)
{
    const QByteArray item = hex("0000002a" "9a94af47" "0000000d" "00000009" "31362e333730303030"
                                "c0abd4d1" "0000000d" "00000009" "34382e323030303030");
    const QByteArray body = hex("37c195fc" "00000032" "7fffffff") + item;
    BinaryReader reader(body);
    Area a;
    EXPECT_THROW(a.SetBinary(reader.stream, body.size()), BinaryParsingException);

    // With a member length near the limit as well: no huge reservation.
    for (const char *field : {"7fffffff", "7ffffff7", "fffffff0"}) {
        const QByteArray huge = hex("37c195fc") + hex(field) + hex("7fffffff") + item;
        BinaryReader hugeReader(huge);
        Area b;
        b.SetValidate(false);
        EXPECT_TRUE(throwsWith<BinaryParsingException>([&] { b.SetBinary(hugeReader.stream, huge.size()); },
                                                       QStringLiteral("Coordinate") + lengthErrorTail))
            << field;
        QByteArray framed = hex("87d84a00") + QByteArray::fromHex(QByteArray::number(huge.size(), 16).rightJustified(8, '0'))
            + huge;
        Area viaBase = samples::area(QStringLiteral("x"), {{1.0, 1.0}});
        EXPECT_FALSE(viaBase.SetBinaryRepresentation(framed));
        EXPECT_EQ(samples::area(QStringLiteral("x"), {{1.0, 1.0}}), viaBase);
    }
}

TEST(BadBinary, CountBeyondTheItemsThereFails)
{
    // Two items announced, one there, and the lengths add up otherwise.
    const QByteArray item = hex("0000002a" "9a94af47" "0000000d" "00000009" "31362e333730303030"
                                "c0abd4d1" "0000000d" "00000009" "34382e323030303030");
    const QByteArray body = hex("58d44d66" "00000005" "00000001" "41" "37c195fc" "00000032" "00000002") + item;
    {
        BinaryReader reader(body);
        Area a;
        EXPECT_THROW(a.SetBinary(reader.stream, body.size()), ReportException);
    }
    QByteArray framed = hex("87d84a00" "00000047") + body;
    Area viaBase = samples::area(QStringLiteral("x"), {{1.0, 1.0}});
    EXPECT_FALSE(viaBase.SetBinaryRepresentation(framed));
    EXPECT_EQ(samples::area(QStringLiteral("x"), {{1.0, 1.0}}), viaBase);
}

TEST(BadBinary, NegativeVectorCountReadsNoItem)
{
    const QByteArray body = hex("58d44d66" "00000005" "00000001" "41" "37c195fc" "00000004" "ffffffff");
    BinaryReader reader(body);
    Area a;
    a.SetValidate(false);
    EXPECT_NO_THROW(a.SetBinary(reader.stream, body.size()));
    EXPECT_TRUE(static_cast<const Area &>(a).GetCoordinate().isEmpty());
    EXPECT_EQ(QStringLiteral("A"), a.GetName());
}

TEST(BadBinary, UnknownTagsAreSkippedInEveryRecordOfATree)
{
    // An unknown member at the head of the Targetareas body.
    const QByteArray full = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    const QByteArray unknown = hex("0badf00d" "00000003" "010203");
    QByteArray bytes = full.left(4) + hex(QByteArray::number(full.size() - 8 + unknown.size(), 16)
                                              .rightJustified(8, '0').constData())
        + unknown + full.mid(8);
    Targetareas t;
    ASSERT_TRUE(t.SetBinaryRepresentation(bytes));
    EXPECT_EQ(samples::targetareas(), t);
}

TEST(BadBinary, WrongIdOrNoDataFails)
{
    Targetareas t = startingPoint();
    const Snapshot before(t);
    QByteArray empty;
    EXPECT_FALSE(t.SetBinaryRepresentation(empty));
    QByteArray otherId = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    otherId[3] = char(otherId[3] ^ 1);
    EXPECT_FALSE(t.SetBinaryRepresentation(otherId));
    QByteArray coordinate = samples::coordinate(1.0, 1.0).GetBinaryRepresentationAsQByteArray();
    EXPECT_FALSE(t.SetBinaryRepresentation(coordinate));
    EXPECT_TRUE(before.matches(t));
}

TEST(BadBinary, FailedReadRestoresUnsetSlotsAndDefaults)
{
    Coordinate c;
    c.SetDefaultLongitude(10.0);
    c.ResetLongitude();
    c.SetLatitude(20.0);
    // Longitude is read, then the length does not add up.
    QByteArray bytes = hex("3b5f8e43" "00000029" "9a94af47" "0000000d" "00000009" "31362e333730303030"
                           "c0abd4d1" "0000000d" "00000009" "34382e323030303030");
    EXPECT_FALSE(c.SetBinaryRepresentation(bytes));
    EXPECT_FALSE(c.IsLongitudeSet());
    EXPECT_EQ(10.0, c.GetLongitude());
    EXPECT_EQ(10.0, c.GetDefaultLongitude());
    EXPECT_EQ(20.0, c.GetLatitude());
    EXPECT_TRUE(c.IsLatitudeSet());
}

// --- XML -----------------------------------------------------------------------------

TEST(BadXml, MalformedTextGivesFalseAndKeepsTheRecord)
{
    const char *const texts[] = {
        "<Targetareas><Area></Targetareas>",
        "<Targetareas><Area><Name>a</Name></Area>",
        "<Targetareas><Area><Name>a</Name><Coordinate><Longitude>1</Latitude></Coordinate></Area></Targetareas>",
        "<Targetareas attr=noquotes></Targetareas>",
        "<Targetareas>&undefined;</Targetareas>",
        "<Targetareas><</Targetareas>",
        "<<>>",
        "<Targetareas/><Targetareas/>",
        "<Targetareas></Targetareas>trailing",
        "<?xml version=\"1.0\"?><Targetareas><Area><Name>\x01</Name></Area></Targetareas>",
        "",
        "   ",
    };
    for (const char *text : texts) {
        Targetareas t = startingPoint();
        const Snapshot before(t);
        EXPECT_FALSE(t.SetXmlString(QString::fromUtf8(text))) << text;
        EXPECT_TRUE(before.matches(t)) << text;
    }
}

TEST(BadXml, EveryTruncationBeforeTheEndTagFails)
{
    const QString full = QString::fromUtf8(testsupport::dataFile("targetareas.xml"));
    const int end = full.indexOf(QStringLiteral("</Targetareas>")) + int(qstrlen("</Targetareas>"));
    ASSERT_GT(end, 100);
    for (int cut = 0; cut < full.size(); ++cut) {
        Targetareas t = startingPoint();
        const Snapshot before(t);
        const bool ok = t.SetXmlString(full.left(cut));
        if (cut < end) {
            EXPECT_FALSE(ok) << cut;
            ASSERT_TRUE(before.matches(t)) << "cut at " << cut;
        } else {
            EXPECT_TRUE(ok) << cut;
        }
    }
}

TEST(BadXml, ProcessXmlOnTruncatedTextStopsWithoutThrowing)
{
    const QString full = QString::fromUtf8(testsupport::dataFile("targetareas.xml"));
    for (int cut : {60, 200, 700, 1000}) {
        XmlReader xml(full.left(cut));
        Targetareas t;
        t.SetValidate(false);
        EXPECT_NO_THROW(t.ProcessXml(xml.reader)) << cut;
        EXPECT_TRUE(xml.reader.atEnd());
        EXPECT_TRUE(xml.reader.hasError());
    }
}

TEST(BadXml, UnknownElementsAreSkipped)
{
    Coordinate c;
    ASSERT_TRUE(c.SetXmlString(QStringLiteral(
        "<Coordinate><Altitude>5</Altitude><Longitude>1</Longitude>"
        "<Extra kind=\"x\"><Longitude>99</Longitude><Deeper><Latitude>98</Latitude></Deeper></Extra>"
        "<Empty/><Latitude>2</Latitude></Coordinate>")));
    EXPECT_EQ(samples::coordinate(1.0, 2.0), c);

    Targetareas t;
    ASSERT_TRUE(t.SetXmlString(QStringLiteral(
        "<Targetareas version=\"9\"><Comment>c</Comment><Area owner=\"x\"><Name>a</Name><Note><Name>no</Name></Note>"
        "<Coordinate><Longitude>1</Longitude><Latitude>2</Latitude><Height>3</Height></Coordinate>"
        "</Area><Unknown><Area><Name>hidden</Name></Area></Unknown></Targetareas>")));
    const Targetareas &view = t;
    ASSERT_EQ(1, view.GetArea().size());
    EXPECT_EQ(QStringLiteral("a"), view.GetArea().at(0).GetName());
    EXPECT_EQ(samples::coordinate(1.0, 2.0), view.GetArea().at(0).GetCoordinate().at(0));
}

TEST(BadXml, NumbersThatAreNoNumbersReadAsZero)
{
    for (const char *text : {"abc", "1,5", "0x10", "", " ", "1.5.2", "--1", "NaN-ish"}) {
        Coordinate c = samples::coordinate(7.0, 8.0);
        const QString xml = QStringLiteral("<Coordinate><Longitude>%1</Longitude></Coordinate>").arg(QLatin1String(text));
        ASSERT_TRUE(c.SetXmlString(xml)) << text;
        EXPECT_EQ(0.0, c.GetLongitude()) << text;
        EXPECT_TRUE(c.IsLongitudeSet()) << text;
        EXPECT_EQ(8.0, c.GetLatitude());
    }
    Frequency f;
    ASSERT_TRUE(f.SetXmlString(QStringLiteral("<Frequency Min=\"low\" Max=\"2\">twelve</Frequency>")));
    EXPECT_EQ(0.0, f.GetValue());
    EXPECT_TRUE(f.IsValueSet());
    EXPECT_EQ(0.0, f.GetMin());
    EXPECT_EQ(2.0, f.GetMax());
}

TEST(BadXml, NumbersThatAreNoNumbersReadAsZeroInBinaryToo)
{
    QByteArray bytes = hex("3b5f8e43" "0000001e"
                           "9a94af47" "00000007" "00000003" "616263"    // "abc"
                           "c0abd4d1" "00000007" "00000003" "312c35");  // "1,5"
    Coordinate c;
    ASSERT_TRUE(c.SetBinaryRepresentation(bytes));
    EXPECT_EQ(samples::coordinate(0.0, 0.0), c);
}

TEST(BadXml, FailedReadRestoresUnsetSlotsAndDefaults)
{
    Coordinate c;
    c.SetDefaultLongitude(10.0);
    c.ResetLongitude();
    c.SetLatitude(20.0);
    EXPECT_FALSE(c.SetXmlString(QStringLiteral("<Coordinate><Longitude>3</Longitude><Latitude>100</Latitude></Coordinate>")));
    EXPECT_FALSE(c.IsLongitudeSet());
    EXPECT_EQ(10.0, c.GetLongitude());
    EXPECT_EQ(20.0, c.GetLatitude());
    EXPECT_FALSE(c.SetXmlString(QStringLiteral("<Coordinate><Longitude>3</Longitude><Latitude>")));
    EXPECT_FALSE(c.IsLongitudeSet());
    EXPECT_EQ(10.0, c.GetLongitude());
}

// --- mutations -------------------------------------------------------------------------

namespace {

class Mutator
{
public:
    explicit Mutator(unsigned seed) : m_random(seed) {}

    int below(int n) { return n <= 0 ? 0 : int(m_random() % unsigned(n)); }

    QByteArray mutate(QByteArray data)
    {
        const int rounds = 1 + below(3);
        for (int r = 0; r < rounds; ++r) {
            const int size = data.size();
            switch (below(8)) {
            case 0: // flip bits of one byte
                if (size)
                    data[below(size)] = char(data[below(size)] ^ (1 << below(8)));
                break;
            case 1: // truncate
                data.truncate(below(size + 1));
                break;
            case 2: // a random byte
                if (size)
                    data[below(size)] = char(below(256));
                break;
            case 3: { // an integer field set to a troublesome value
                if (size < 4)
                    break;
                static const quint32 values[] = {0, 1, 3, 4, 0xffffffffu, 0x7fffffffu, 0x80000000u, 0xfffffff8u, 42, 13};
                const quint32 v = values[below(int(sizeof values / sizeof *values))];
                const int at = below(size - 3);
                for (int i = 0; i < 4; ++i)
                    data[at + i] = char((v >> (24 - 8 * i)) & 0xff);
                break;
            }
            case 4: // insert random bytes
                data.insert(below(size + 1), randomBytes(1 + below(9)));
                break;
            case 5: // remove a range
                if (size)
                    data.remove(below(size), 1 + below(12));
                break;
            case 6: { // duplicate a range
                if (!size)
                    break;
                const int from = below(size);
                data.insert(below(size + 1), data.mid(from, 1 + below(40)));
                break;
            }
            default: { // adjust a field by one
                if (size < 4)
                    break;
                const int at = below(size - 3);
                data[at + 3] = char(data[at + 3] + (below(2) ? 1 : -1));
                break;
            }
            }
        }
        return data;
    }

    QString mutate(QString text)
    {
        static const QString pieces[] = {
            QStringLiteral("<"), QStringLiteral(">"), QStringLiteral("/"), QStringLiteral("&"),
            QStringLiteral("\""), QStringLiteral("<Area>"), QStringLiteral("</Area>"), QStringLiteral("<Coordinate>"),
            QStringLiteral("</Coordinate>"), QStringLiteral("<Longitude>1e9</Longitude>"), QStringLiteral("<Name/>"),
            QStringLiteral("<Latitude>-91</Latitude>"), QStringLiteral("x"), QStringLiteral("-"),
            QStringLiteral("<![CDATA["), QStringLiteral("<!--"), QStringLiteral("<Foo><Foo>"), QStringLiteral("</Foo>"),
            QStringLiteral(" a=\"1\""), QStringLiteral("</Targetareas>"),
        };
        const int rounds = 1 + below(3);
        for (int r = 0; r < rounds; ++r) {
            const int size = text.size();
            switch (below(5)) {
            case 0:
                text.truncate(below(size + 1));
                break;
            case 1:
                if (size)
                    text.remove(below(size), 1 + below(20));
                break;
            case 2:
                text.insert(below(size + 1), pieces[below(int(sizeof pieces / sizeof *pieces))]);
                break;
            case 3:
                if (size)
                    text[below(size)] = QChar(ushort(32 + below(95)));
                break;
            default: {
                if (!size)
                    break;
                const int from = below(size);
                text.insert(below(size + 1), text.mid(from, 1 + below(80)));
                break;
            }
            }
        }
        return text;
    }

private:
    QByteArray randomBytes(int n)
    {
        QByteArray bytes;
        for (int i = 0; i < n; ++i)
            bytes.append(char(below(256)));
        return bytes;
    }

    std::mt19937 m_random;
};

} // namespace

TEST(Fuzz, BinaryMutationsNeverCrashAndFailedReadsKeepTheRecord)
{
    const QByteArray valid = samples::targetareas().GetBinaryRepresentationAsQByteArray();
    Mutator mutator(20240611u);
    int failures = 0;
    int accepted = 0;
    int rejected = 0;
    for (int i = 0; i < 4000 && failures < 5; ++i) {
        const QByteArray mutated = mutator.mutate(valid);
        Targetareas t = startingPoint();
        const bool validate = i % 3 != 0;
        t.SetValidate(validate);
        const Snapshot before(t);
        QByteArray input = mutated;
        if (t.SetBinaryRepresentation(input)) {
            ++accepted;
            // What was read can be written again.
            Targetareas copy(t);
            copy.SetValidate(false);
            copy.GetBinaryRepresentationAsQByteArray();
            copy.GetXmlString();
        } else {
            ++rejected;
            const ::testing::AssertionResult same = before.matches(t);
            if (!same) {
                ++failures;
                ADD_FAILURE() << "mutation " << i << ": " << same.message() << "\n" << mutated.toHex().constData();
            }
        }
        // The body straight into SetBinary: only the frame's failures come out.
        if (mutated.size() >= 8) {
            BinaryReader reader(mutated.mid(8));
            Targetareas direct;
            direct.SetValidate(validate);
            try {
                direct.SetBinary(reader.stream, reader.bytes.size());
            } catch (const ReportException &) {
            }
        }
    }
    EXPECT_EQ(0, failures);
    EXPECT_GT(accepted, 0);
    EXPECT_GT(rejected, 0);
}

TEST(Fuzz, XmlMutationsNeverCrashAndFailedReadsKeepTheRecord)
{
    const QString valid = samples::targetareas().GetXmlString();
    Mutator mutator(987654321u);
    int failures = 0;
    int accepted = 0;
    int rejected = 0;
    for (int i = 0; i < 4000 && failures < 5; ++i) {
        const QString mutated = mutator.mutate(valid);
        Targetareas t = startingPoint();
        const bool validate = i % 3 != 0;
        t.SetValidate(validate);
        const Snapshot before(t);
        if (t.SetXmlString(mutated)) {
            ++accepted;
            Targetareas copy(t);
            copy.SetValidate(false);
            copy.GetXmlString();
            copy.GetBinaryRepresentationAsQByteArray();
        } else {
            ++rejected;
            const ::testing::AssertionResult same = before.matches(t);
            if (!same) {
                ++failures;
                ADD_FAILURE() << "mutation " << i << ": " << same.message() << "\n" << mutated.toStdString();
            }
        }
        XmlReader xml(mutated);
        Targetareas direct;
        direct.SetValidate(validate);
        try {
            if (xml.reader.isStartElement())
                direct.ProcessXml(xml.reader);
        } catch (const ReportException &) {
        }
    }
    EXPECT_EQ(0, failures);
    EXPECT_GT(accepted, 0);
    EXPECT_GT(rejected, 0);
}
