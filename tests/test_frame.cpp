// The object frame: failure types, date-time converters, the trace handler,
// the logger and the generic entry points of the object base.

#include "testsupport.h"

#include <QtCore/QDate>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTime>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

using namespace ORBELIN;
using testsupport::throwsWith;

// --- exceptions ------------------------------------------------------------------

static_assert(std::is_base_of<std::exception, ReportException>::value, "ReportException is a std::exception");
static_assert(std::is_base_of<ReportException, OrbelinException>::value, "OrbelinException under ReportException");
static_assert(std::is_base_of<OrbelinException, OutOfRangeException>::value, "");
static_assert(std::is_base_of<OrbelinException, BinaryParsingException>::value, "");
static_assert(std::is_base_of<OrbelinException, IncompleteDefinitionException>::value, "");
static_assert(std::is_base_of<OrbelinException, InvalidXmlException>::value, "");
static_assert(!std::is_base_of<OutOfRangeException, BinaryParsingException>::value, "siblings");
static_assert(!std::is_convertible<QString, ReportException>::value, "the message constructor is explicit");

template <class E>
static void expectMessageKept(const char *name)
{
    const QString message = QStringLiteral("Parameters for m_latitude are not set within range (-90, 90) in 'Coordinate'.");
    const E e(message);
    EXPECT_EQ(message, e.GetMessage()) << name;
    EXPECT_EQ(QString::fromLatin1(name), e.GetExceptionName());

    const E copy(e);
    EXPECT_EQ(message, copy.GetMessage()) << name;
    EXPECT_STREQ(e.what(), copy.what()) << name;

    E assigned(QStringLiteral("other"));
    assigned = e;
    EXPECT_EQ(message, assigned.GetMessage()) << name;
}

TEST(Exceptions, ConstructorFromQStringAndCopyKeepTheMessage)
{
    expectMessageKept<ReportException>("ReportException");
    expectMessageKept<OrbelinException>("OrbelinException");
    expectMessageKept<OutOfRangeException>("OutOfRangeException");
    expectMessageKept<BinaryParsingException>("BinaryParsingException");
    expectMessageKept<IncompleteDefinitionException>("IncompleteDefinitionException");
    expectMessageKept<InvalidXmlException>("InvalidXmlException");
}

TEST(Exceptions, GetMessageIsExactlyTheTextGiven)
{
    // Leading and trailing blanks, an empty text and a null text stay as they are.
    EXPECT_EQ(QStringLiteral("  a\tb \n"), OutOfRangeException(QStringLiteral("  a\tb \n")).GetMessage());
    EXPECT_EQ(QLatin1String(""), InvalidXmlException(QLatin1String("")).GetMessage());
    EXPECT_TRUE(ReportException(QString()).GetMessage().isEmpty());
}

TEST(Exceptions, WhatIsTheMessageInUtf8)
{
    const QString message = QString::fromUtf8("L\xc3\xa4nge \xe2\x80\x93 \xe2\x9c\x93 in 'Stra\xc3\x9f\x65'");
    const BinaryParsingException e(message);
    EXPECT_EQ(message.toUtf8(), QByteArray(e.what()));
    const std::exception &base = e;
    EXPECT_EQ(message.toUtf8(), QByteArray(base.what()));
    // A copy owns its own text: the original may go away.
    const char *copied = nullptr;
    std::unique_ptr<BinaryParsingException> original(new BinaryParsingException(message));
    BinaryParsingException copy(*original);
    original.reset();
    copied = copy.what();
    EXPECT_EQ(message.toUtf8(), QByteArray(copied));
}

TEST(Exceptions, ThrownByValueCaughtByReferenceThroughTheClassTree)
{
    const QString message = QStringLiteral("Unknown Tag 'X' in 'Y'.");
    try {
        throw InvalidXmlException(message);
    } catch (const OutOfRangeException &) {
        FAIL() << "caught by a sibling class";
    } catch (const OrbelinException &e) {
        EXPECT_EQ(message, e.GetMessage());
        EXPECT_NE(nullptr, dynamic_cast<const InvalidXmlException *>(&e));
        EXPECT_EQ(QStringLiteral("InvalidXmlException"), e.GetExceptionName());
    }

    int caught = 0;
    const std::vector<std::function<void()>> throwers = {
        [] { throw OutOfRangeException(QStringLiteral("a")); },
        [] { throw BinaryParsingException(QStringLiteral("b")); },
        [] { throw IncompleteDefinitionException(QStringLiteral("c")); },
        [] { throw InvalidXmlException(QStringLiteral("d")); },
        [] { throw OrbelinException(QStringLiteral("e")); },
    };
    for (const auto &thrower : throwers) {
        try {
            thrower();
        } catch (const ReportException &e) {
            ++caught;
            EXPECT_EQ(1, e.GetMessage().size());
        }
    }
    EXPECT_EQ(5, caught);

    try {
        throw ReportException(message);
    } catch (const OrbelinException &) {
        FAIL() << "a ReportException is no OrbelinException";
    } catch (const std::exception &e) {
        EXPECT_STREQ("Unknown Tag 'X' in 'Y'.", e.what());
    }
}

// --- converters --------------------------------------------------------------------

TEST(Converters, FormatConstants)
{
    EXPECT_EQ(QStringLiteral("yyyy-MM-ddThh:mm:ss,zzzZ"), Converters::DateTimeFormat());
    EXPECT_EQ(QStringLiteral("hh:mm:ss,zzz"), Converters::TimeFormat());
}

TEST(Converters, ToStringWritesUtcInTheDateTimeFormat)
{
    const QDateTime t(QDate(2024, 3, 5), QTime(7, 8, 9, 45), Qt::UTC);
    EXPECT_EQ(QStringLiteral("2024-03-05T07:08:09,045Z"), Converters::ToString(t));
    const QDateTime late(QDate(1999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC);
    EXPECT_EQ(QStringLiteral("1999-12-31T23:59:59,999Z"), Converters::ToString(late));
}

TEST(Converters, ToStringConvertsAnOffsetToUtc)
{
    const QDateTime vienna(QDate(2024, 1, 1), QTime(0, 30, 0, 7), Qt::OffsetFromUTC, 3600);
    EXPECT_EQ(QStringLiteral("2023-12-31T23:30:00,007Z"), Converters::ToString(vienna));
    const QDateTime west(QDate(2024, 6, 30), QTime(22, 0, 0, 0), Qt::OffsetFromUTC, -5 * 3600);
    EXPECT_EQ(QStringLiteral("2024-07-01T03:00:00,000Z"), Converters::ToString(west));
}

// ToString writes the usual years digit by digit; whatever it writes must be
// what Qt's own formatter makes of the UTC date and time, for years of four
// digits and for the years around them that Qt pads or widens itself.
TEST(Converters, ToStringWritesWhatQtsFormatterWrites)
{
    const auto qtText = [](const QDateTime &t) {
        const QDateTime utc = t.toUTC();
        return utc.date().toString(QStringLiteral("yyyy-MM-dd")) + QLatin1Char('T')
            + utc.time().toString(Converters::TimeFormat()) + QLatin1Char('Z');
    };
    QRandomGenerator random(20261124);
    const QDateTime first(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
    const qint64 span = first.msecsTo(QDateTime(QDate(12000, 12, 31), QTime(23, 59, 59, 999), Qt::UTC));
    for (int i = 0; i < 20000; ++i) {
        const QDateTime t = first.addMSecs(qint64(random.generateDouble() * double(span)));
        ASSERT_EQ(qtText(t), Converters::ToString(t)) << t.toMSecsSinceEpoch();
        const QDateTime shifted = t.toOffsetFromUtc(random.bounded(-14, 15) * 3600);
        ASSERT_EQ(qtText(shifted), Converters::ToString(shifted)) << shifted.toMSecsSinceEpoch();
    }
    for (int year : {999, 1000, 9999, 10000}) {
        for (const QDateTime &t : {QDateTime(QDate(year, 1, 1), QTime(0, 0), Qt::UTC),
                                   QDateTime(QDate(year, 12, 31), QTime(23, 59, 59, 999), Qt::UTC)})
            EXPECT_EQ(qtText(t), Converters::ToString(t)) << year;
    }
}

// Local time in a zone east of UTC; the process zone is put back afterwards.
class LocalZone : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_had = qEnvironmentVariableIsSet("TZ");
        m_old = qgetenv("TZ");
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        tzset();
    }
    void TearDown() override
    {
        if (m_had)
            qputenv("TZ", m_old);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    bool m_had = false;
    QByteArray m_old;
};

TEST_F(LocalZone, ToStringConvertsLocalTimeToUtc)
{
    const QDateTime winter(QDate(2024, 1, 15), QTime(12, 0, 0, 250), Qt::LocalTime);
    ASSERT_EQ(3600, winter.offsetFromUtc()) << "the zone of the test did not take effect";
    EXPECT_EQ(QStringLiteral("2024-01-15T11:00:00,250Z"), Converters::ToString(winter));
    const QDateTime summer(QDate(2024, 7, 15), QTime(1, 30, 0, 0), Qt::LocalTime);
    EXPECT_EQ(QStringLiteral("2024-07-14T23:30:00,000Z"), Converters::ToString(summer));
    // Read back, the text is the same instant, in UTC.
    const QDateTime back = Converters::ToDateTime(Converters::ToString(winter));
    EXPECT_EQ(Qt::UTC, back.timeSpec());
    EXPECT_EQ(winter.toMSecsSinceEpoch(), back.toMSecsSinceEpoch());
}

TEST(Converters, ToDateTimeReadsUtc)
{
    const QDateTime t = Converters::ToDateTime(QStringLiteral("2024-03-05T07:08:09,045Z"));
    ASSERT_TRUE(t.isValid());
    EXPECT_EQ(Qt::UTC, t.timeSpec());
    EXPECT_EQ(QDate(2024, 3, 5), t.date());
    EXPECT_EQ(QTime(7, 8, 9, 45), t.time());
}

TEST(Converters, RoundTripIsExactToTheMillisecond)
{
    const QDateTime start(QDate(2021, 2, 28), QTime(23, 59, 58, 0), Qt::UTC);
    for (int ms = 0; ms < 2000; ms += 7) {
        const QDateTime t = start.addMSecs(ms);
        const QString text = Converters::ToString(t);
        const QDateTime back = Converters::ToDateTime(text);
        ASSERT_EQ(t, back) << text.toStdString();
        ASSERT_EQ(t.toMSecsSinceEpoch(), back.toMSecsSinceEpoch());
        ASSERT_EQ(text, Converters::ToString(back));
    }
}

TEST(Converters, TextThatIsNoDateGivesAnInvalidDateTime)
{
    const char *const texts[] = {
        "",
        "garbage",
        "2024-03-05",
        "2024-03-05T07:08:09Z",
        "2024-03-05T07:08:09,045",
        "2024-03-05 07:08:09,045Z",
        "2024-13-05T07:08:09,045Z",
        "2024-02-30T07:08:09,045Z",
        "2024-03-05T25:08:09,045Z",
        "2024-03-05T07:61:09,045Z",
        "2024-03-05T07:08:09,04xZ",
        "2024-03-05T07:08:09,045Z ",
    };
    for (const char *text : texts)
        EXPECT_FALSE(Converters::ToDateTime(QString::fromLatin1(text)).isValid()) << text;
}

TEST(Converters, InvalidDateTimeGivesEmptyText)
{
    EXPECT_TRUE(Converters::ToString(QDateTime()).isEmpty());
}

// --- logger ------------------------------------------------------------------------

TEST(Logger, LevelNames)
{
    EXPECT_EQ(QStringList({QStringLiteral("ERROR"), QStringLiteral("WARNING"), QStringLiteral("INFO")}),
              Logger::LevelNames());
    EXPECT_EQ(0, int(Logger::Error));
    EXPECT_EQ(1, int(Logger::Warning));
    EXPECT_EQ(2, int(Logger::Info));
}

// --- trace -------------------------------------------------------------------------

class Trace : public ::testing::Test
{
protected:
    void SetUp() override { m_mask = ErrorHandler::Instance()->GetTraceMask(); }
    void TearDown() override
    {
        ErrorHandler::Instance()->SetTraceSink(ErrorHandler::TraceSink());
        ErrorHandler::Instance()->SetTraceMask(m_mask);
    }

private:
    unsigned m_mask = 0;
};

struct TraceLine
{
    QString file;
    QString text;
    unsigned short line;
};

TEST_F(Trace, InstanceIsOneObjectForTheProcess)
{
    ErrorHandler *handler = ErrorHandler::Instance();
    ASSERT_NE(nullptr, handler);
    EXPECT_EQ(handler, ErrorHandler::Instance());
}

TEST_F(Trace, MaskIsKeptAndErrorBitIs0x20)
{
    EXPECT_EQ(0x20u, ErrorHandler::TraceErrors);
    ErrorHandler::Instance()->SetTraceMask(0x20);
    EXPECT_EQ(0x20u, ErrorHandler::Instance()->GetTraceMask());
    EXPECT_TRUE(ErrorHandler::Instance()->GetTraceMask() & ErrorHandler::TraceErrors);
    ErrorHandler::Instance()->SetTraceMask(0x1f);
    EXPECT_EQ(0x1fu, ErrorHandler::Instance()->GetTraceMask());
    EXPECT_FALSE(ErrorHandler::Instance()->GetTraceMask() & ErrorHandler::TraceErrors);
}

TEST_F(Trace, SinkCapturesTraceLines)
{
    std::vector<TraceLine> lines;
    ErrorHandler::Instance()->SetTraceSink(
        [&lines](const QString &file, const QString &text, unsigned short line) { lines.push_back({file, text, line}); });
    _Q_Trace(QStringLiteral("frequencystore/filehandling"), QStringLiteral("detection results not imported"), 412);
    _Q_Trace(QStringLiteral("frequencystore/detectionresulthelper"),
             QString::fromUtf8("DetectionResultHelper::Init \xc3\xbc"), 65535);
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(QStringLiteral("frequencystore/filehandling"), lines[0].file);
    EXPECT_EQ(QStringLiteral("detection results not imported"), lines[0].text);
    EXPECT_EQ(412, lines[0].line);
    EXPECT_EQ(QStringLiteral("frequencystore/detectionresulthelper"), lines[1].file);
    EXPECT_EQ(QString::fromUtf8("DetectionResultHelper::Init \xc3\xbc"), lines[1].text);
    EXPECT_EQ(65535, lines[1].line);
}

TEST_F(Trace, DefaultSinkWritesFileLineAndTextToStderr)
{
    ErrorHandler::Instance()->SetTraceSink(ErrorHandler::TraceSink());
    ::testing::internal::CaptureStderr();
    _Q_Trace(QStringLiteral("frequencystore/filehandling"), QStringLiteral("find application"), 7);
    const std::string written = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ("frequencystore/filehandling(7): find application\n", written);
}

// --- the object base ---------------------------------------------------------------

TEST(ObjectBase, ValidationIsOnForANewObject)
{
    Morvane::Coordinate c;
    EXPECT_TRUE(c.GetValidate());
    c.SetValidate(false);
    EXPECT_FALSE(c.GetValidate());
}

TEST(ObjectBase, NamesAndIds)
{
    EXPECT_EQ(QStringLiteral("Coordinate"), Morvane::Coordinate().GetObjectName());
    EXPECT_EQ(QStringLiteral("Area"), Morvane::Area().GetObjectName());
    EXPECT_EQ(QStringLiteral("Targetareas"), Morvane::Targetareas().GetObjectName());
    EXPECT_EQ(Q_INT64_C(0x3b5f8e43), Morvane::Coordinate::GetId());
    EXPECT_EQ(qint64(Q_UINT64_C(0xffffffff87d84a00)), Morvane::Area::GetId());
    EXPECT_EQ(Q_INT64_C(0x4cbb9887), Morvane::Targetareas::GetId());
    EXPECT_TRUE(Morvane::Coordinate().GetVersion().isEmpty());
}

TEST(ObjectBase, BaseValueTests)
{
    Morvane::Coordinate c;
    const IOrbelinObject &object = c;
    EXPECT_TRUE(object.IsValid(1.5));
    EXPECT_FALSE(object.IsValid(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(object.IsValid(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_TRUE(object.IsValid(QLatin1String("")));
    EXPECT_FALSE(object.IsValid(QString()));
    EXPECT_FALSE(object.IsValid(QDateTime()));
    EXPECT_TRUE(object.IsValid(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC)));

    int i = 5;
    object.SetInvalid(i);
    EXPECT_EQ(-1, i);
    double d = 5.0;
    object.SetInvalid(d);
    EXPECT_TRUE(std::isnan(d));
    QString s = QStringLiteral("x");
    object.SetInvalid(s);
    EXPECT_TRUE(s.isNull());
}

TEST(ObjectBase, SetObjectTypeChangesNothing)
{
    Morvane::Coordinate c;
    const ObjectTypes before = c.GetObjectType();
    c.SetObjectType(ObjectTypes(7));
    EXPECT_EQ(before, c.GetObjectType());
    Morvane::Coordinate copy(c);
    EXPECT_EQ(before, copy.GetObjectType());
}

TEST(ObjectBase, MergeChangesNothing)
{
    Morvane::Coordinate a = samples::coordinate(1.0, 2.0);
    const Morvane::Coordinate b = samples::coordinate(3.0, 4.0);
    EXPECT_FALSE(a.MergeOrbelinObject(b));
    EXPECT_EQ(samples::coordinate(1.0, 2.0), a);
}

TEST(ObjectBase, LoggerIsHandedDownToChildren)
{
    auto logger = std::make_shared<Logger>();
    Morvane::Targetareas t = samples::targetareas();
    t.SetLogger(logger);
    EXPECT_EQ(logger, t.GetLogger());
    const Morvane::Targetareas &view = t;
    for (const Morvane::Area &area : view.GetArea()) {
        EXPECT_EQ(logger, area.GetLogger());
        for (const Morvane::Coordinate &c : area.GetCoordinate())
            EXPECT_EQ(logger, c.GetLogger());
    }
    t.ResetLogger();
    EXPECT_EQ(nullptr, t.GetLogger());
}

TEST(ObjectBase, CompressedRepresentationIsQCompressOfThePlainOne)
{
    const Morvane::Targetareas t = samples::targetareas();
    const QByteArray plain = t.GetBinaryRepresentationAsQByteArray();
    const QByteArray packed = t.GetCompressedBinaryRepresentationAsQByteArray(9);
    EXPECT_EQ(plain, qUncompress(packed));

    Morvane::Targetareas back;
    ASSERT_TRUE(back.SetCompressedBinaryRepresentation(packed));
    EXPECT_EQ(t, back);

    testsupport::BinaryWriter writer;
    t.GetCompressedBinaryRepresentation(writer.stream, 5);
    testsupport::BinaryReader reader(writer.bytes);
    QByteArray fromStream;
    reader.stream >> fromStream;
    EXPECT_EQ(plain, qUncompress(fromStream));

    Morvane::Targetareas untouched = samples::otherTargetareas();
    EXPECT_FALSE(untouched.SetCompressedBinaryRepresentation(QByteArray("no zlib data")));
    EXPECT_EQ(samples::otherTargetareas(), untouched);
}
