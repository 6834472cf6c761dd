#ifndef MORVANE_TESTS_RECORDTESTSUPPORT_H
#define MORVANE_TESTS_RECORDTESTSUPPORT_H

// Small helpers shared by the record tests: the compact XML form of a record,
// building and taking apart binary frames with Qt's own data streams, and a
// translator that marks every text it translates.

#include "testsupport.h"

#include <morvane.h>

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QString>
#include <QtCore/QTranslator>
#include <QtCore/QVector>
#include <QtCore/QXmlStreamWriter>

#include <initializer_list>
#include <memory>
#include <ostream>

// gtest output of QString and QByteArray comes from testsupport.h; this adds
// QStringList.
inline void PrintTo(const QStringList &list, std::ostream *os)
{
    *os << '{';
    for (int i = 0; i < list.size(); ++i)
        *os << (i ? ", \"" : "\"") << list.at(i).toStdString() << '"';
    *os << '}';
}

namespace MorvaneTest {

// The tag under which a versioned record keeps its version in binary.
constexpr quint32 VersionTag = 0xe25fbba8u;

// The record's own element, written without document and indentation.
inline QString compactXml(const ORBELIN::IOrbelinObject &record)
{
    QString text;
    QXmlStreamWriter writer(&text);
    record.GetXml(writer);
    return text;
}

inline void prepare(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(QDataStream::BigEndian);
}

inline QByteArray be32(quint32 value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << value;
    return bytes;
}

// A QString in the data stream's own form (used for the version).
inline QByteArray qstringValue(const QString &text)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << text;
    return bytes;
}

// A text member's value: a QByteArray of the UTF-8 text.
inline QByteArray utf8Value(const QString &text)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << text.toUtf8();
    return bytes;
}

inline QByteArray boolValue(bool value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    prepare(stream);
    stream << value;
    return bytes;
}

// Tag, length and value.
inline QByteArray frame(quint32 tag, const QByteArray &value)
{
    return be32(tag) + be32(quint32(value.size())) + value;
}

inline QByteArray versionFrame(const QString &version)
{
    return frame(VersionTag, qstringValue(version));
}

// A whole representation: the id, the body's length and the body.
inline QByteArray representation(qint64 id, const QByteArray &body)
{
    return be32(quint32(id)) + be32(quint32(body.size())) + body;
}

// A record written as it is stored under a tag in its parent: tag, length,
// body.
inline QByteArray nested(const ORBELIN::IOrbelinObject &record, quint32 tag)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    prepare(stream);
    record.GetBinary(stream, int(tag), true);
    return bytes;
}

inline quint32 readBe32(const QByteArray &bytes, int pos)
{
    if (pos < 0 || pos + 4 > bytes.size())
        return 0;
    const auto *p = reinterpret_cast<const uchar *>(bytes.constData()) + pos;
    return (quint32(p[0]) << 24) | (quint32(p[1]) << 16) | (quint32(p[2]) << 8) | quint32(p[3]);
}

// The body of a representation (after id and length).
inline QByteArray bodyOf(const QByteArray &rep)
{
    EXPECT_GE(rep.size(), 8);
    const int length = int(readBe32(rep, 4));
    EXPECT_EQ(rep.size(), 8 + length) << "the length field does not cover the body";
    return rep.mid(8, length);
}

struct Frame
{
    quint32 tag;
    QByteArray value;
};

// The member frames of a body, in the order they stand.
inline QVector<Frame> splitFrames(const QByteArray &body)
{
    QVector<Frame> frames;
    int pos = 0;
    while (pos < body.size()) {
        if (pos + 8 > body.size()) {
            ADD_FAILURE() << "a member frame is cut off at " << pos;
            break;
        }
        const quint32 tag = readBe32(body, pos);
        const int length = int(readBe32(body, pos + 4));
        if (length < 0 || pos + 8 + length > body.size()) {
            ADD_FAILURE() << "a member frame overruns the body at " << pos;
            break;
        }
        frames.append({tag, body.mid(pos + 8, length)});
        pos += 8 + length;
    }
    return frames;
}

inline QVector<quint32> tagsOf(const QByteArray &body)
{
    QVector<quint32> tags;
    for (const Frame &f : splitFrames(body))
        tags.append(f.tag);
    return tags;
}

// The value of the first frame with that tag; a null array when there is none.
inline QByteArray valueOf(const QByteArray &body, quint32 tag)
{
    for (const Frame &f : splitFrames(body)) {
        if (f.tag == tag)
            return f.value;
    }
    return QByteArray();
}

inline bool hasTag(const QByteArray &body, quint32 tag)
{
    return tagsOf(body).contains(tag);
}

template <class Record>
struct RoundTrip
{
    Record fromXml;
    Record fromBinary;
};

// Writes `record` as an XML document and as a binary representation and
// reads both back: each copy equals the original and writes the same XML, and
// the copy read from binary writes the same bytes again.
template <class Record>
RoundTrip<Record> roundTrip(const Record &record)
{
    RoundTrip<Record> trip;
    EXPECT_TRUE(trip.fromXml.SetXmlString(record.GetXmlString(), true));
    EXPECT_TRUE(trip.fromXml == record);
    EXPECT_EQ(compactXml(record), compactXml(trip.fromXml));
    QByteArray rep = record.GetBinaryRepresentationAsQByteArray();
    EXPECT_TRUE(trip.fromBinary.SetBinaryRepresentation(rep));
    EXPECT_TRUE(trip.fromBinary == record);
    EXPECT_EQ(compactXml(record), compactXml(trip.fromBinary));
    EXPECT_EQ(rep, trip.fromBinary.GetBinaryRepresentationAsQByteArray());
    return trip;
}

// Checks an enumeration: the name list, the GUI list, both lookups and the
// values outside it.
template <class R, class E>
void checkEnumeration(const QStringList &expected, QStringList (*names)(), QStringList (*gui)(),
                      QString (R::*toName)(const E &) const, E (R::*toValue)(const QString &) const,
                      bool (R::*isValid)(const E &) const)
{
    EXPECT_EQ(expected, names());
    EXPECT_EQ(expected, gui());
    R record;
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected.at(i), (record.*toName)(E(i)));
        EXPECT_EQ(i, int((record.*toValue)(expected.at(i))));
        EXPECT_TRUE((record.*isValid)(E(i)));
        EXPECT_EQ(-1, int((record.*toValue)(expected.at(i).toLower() + "x")));
        EXPECT_EQ(-1, int((record.*toValue)(expected.at(i) + " ")));
    }
    EXPECT_TRUE((record.*toName)(E(-1)).isNull());
    EXPECT_TRUE((record.*toName)(E(int(expected.size()))).isNull());
    EXPECT_FALSE((record.*isValid)(E(-1)));
    EXPECT_FALSE((record.*isValid)(E(int(expected.size()))));
    EXPECT_FALSE((record.*isValid)(E(int(expected.size()) + 100)));
}

// Reads a document that gives an enumerated member a name the enumeration
// does not have. With validation on the read throws `message`; with it off
// the member is set to the invalid value -1. Gives the record read without
// validation.
template <class Record, class Value>
Record readUnknownEnumName(const QString &document, const QString &message, bool (Record::*isSet)() const,
                           Value (Record::*get)() const);

// One member made invalid past its setter, and the name Check gives for it.
template <class Record>
struct Spoil
{
    const char *name;
    void (*spoil)(Record &);
};

// For each case: `valid` passes Check; with validation off and the member
// spoiled, Check throws "<prefix>: Please set <name> properly.".
template <class Record>
void expectCheckNamesSpoiled(const Record &valid, const QString &prefix, std::initializer_list<Spoil<Record>> cases);

// A translator that answers every text of the library's contexts with
// "context|text", so that a test can see a text went through tr.
class MarkingTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override
    {
        Q_UNUSED(disambiguation);
        Q_UNUSED(n);
        if (!context || !QByteArray(context).startsWith("Morvane::"))
            return QString();
        return QString::fromLatin1(context) + QLatin1Char('|') + QString::fromUtf8(sourceText);
    }
    bool isEmpty() const override { return false; }
};

// Installs a MarkingTranslator for its lifetime, with an application object
// if there is none yet.
class ScopedMarkingTranslator
{
public:
    ScopedMarkingTranslator()
    {
        if (!QCoreApplication::instance()) {
            static int argc = 1;
            static char name[] = "morvane_tests";
            static char *argv[] = {name, nullptr};
            m_app.reset(new QCoreApplication(argc, argv));
        }
        m_installed = QCoreApplication::installTranslator(&m_translator);
    }
    ~ScopedMarkingTranslator() { QCoreApplication::removeTranslator(&m_translator); }
    bool installed() const { return m_installed; }

    // What the translator makes of a text of a context.
    static QString marked(const char *context, const QString &text)
    {
        return QString::fromLatin1(context) + QLatin1Char('|') + text;
    }
    static QStringList marked(const char *context, const QStringList &texts)
    {
        QStringList out;
        for (const QString &t : texts)
            out.append(marked(context, t));
        return out;
    }

private:
    std::unique_ptr<QCoreApplication> m_app;
    MarkingTranslator m_translator;
    bool m_installed = false;
};

} // namespace MorvaneTest

// Runs `statement`, expects it to throw `type` and compares the message.
#define EXPECT_THROW_MESSAGE(statement, type, message)                                    \
    do {                                                                                 \
        bool thrown_ = false;                                                            \
        try {                                                                            \
            statement;                                                                   \
        } catch (const type &e_) {                                                       \
            thrown_ = true;                                                              \
            EXPECT_EQ(QString(message), e_.GetMessage());                                \
            EXPECT_TRUE(typeid(e_) == typeid(type)) << "threw a subclass of " #type;     \
        } catch (const std::exception &e_) {                                             \
            thrown_ = true;                                                              \
            ADD_FAILURE() << "threw another exception: " << e_.what();                  \
        }                                                                                \
        EXPECT_TRUE(thrown_) << "expected " #type " from " #statement;                   \
    } while (0)

namespace MorvaneTest {

template <class Record, class Value>
Record readUnknownEnumName(const QString &document, const QString &message, bool (Record::*isSet)() const,
                           Value (Record::*get)() const)
{
    Record strict;
    EXPECT_THROW_MESSAGE(strict.SetXmlString(document, true), ORBELIN::OutOfRangeException, message);
    Record lax;
    lax.SetValidate(false);
    EXPECT_TRUE(lax.SetXmlString(document, true));
    EXPECT_TRUE((lax.*isSet)());
    EXPECT_EQ(-1, int((lax.*get)()));
    return lax;
}

template <class Record>
void expectCheckNamesSpoiled(const Record &valid, const QString &prefix, std::initializer_list<Spoil<Record>> cases)
{
    for (const Spoil<Record> &c : cases) {
        Record record = valid;
        EXPECT_NO_THROW(record.Check());
        record.SetValidate(false);
        c.spoil(record);
        EXPECT_THROW_MESSAGE(record.Check(), ORBELIN::OutOfRangeException,
                             QStringLiteral("%1: Please set %2 properly.").arg(prefix, QLatin1String(c.name)));
    }
}

} // namespace MorvaneTest

#endif
