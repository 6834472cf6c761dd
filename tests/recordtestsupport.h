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

#endif
