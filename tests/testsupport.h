#ifndef MORVANE_TESTS_TESTSUPPORT_H
#define MORVANE_TESTS_TESTSUPPORT_H

#include "samples.h"

#include <morvane.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include <gtest/gtest.h>

#include <ostream>
#include <typeinfo>

// gtest output of the Qt types the tests compare.
inline void PrintTo(const QString &text, std::ostream *os)
{
    *os << '"' << text.toUtf8().constData() << '"' << (text.isNull() ? " (null)" : "");
}

inline void PrintTo(const QByteArray &bytes, std::ostream *os)
{
    *os << bytes.size() << " bytes: " << bytes.toHex(' ').constData();
}

namespace Morvane {

// gtest output of a record: its XML, written without validation so that
// incomplete records show too.
inline std::ostream &operator<<(std::ostream &os, const Record &record)
{
    const bool validate = record.GetValidate();
    record.SetValidate(false);
    QString text;
    {
        QXmlStreamWriter writer(&text);
        record.GetXml(writer);
    }
    record.SetValidate(validate);
    return os << text.toUtf8().constData();
}

} // namespace Morvane

namespace testsupport {

// The text of a file under tests/data, as bytes.
inline QByteArray dataFile(const char *name)
{
    QFile file(QStringLiteral(MORVANE_TEST_DATA "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot open test data file " << name;
        return QByteArray();
    }
    return file.readAll();
}

inline QByteArray hex(const char *text)
{
    return QByteArray::fromHex(QByteArray(text));
}

// A big-endian data stream over a buffer, as an application makes one.
struct BinaryWriter
{
    QByteArray bytes;
    QBuffer buffer{&bytes};
    QDataStream stream;

    BinaryWriter()
    {
        buffer.open(QIODevice::ReadWrite);
        stream.setDevice(&buffer);
        stream.setByteOrder(QDataStream::BigEndian);
    }
};

// A big-endian data stream reading the given bytes.
struct BinaryReader
{
    QByteArray bytes;
    QBuffer buffer{&bytes};
    QDataStream stream;

    explicit BinaryReader(const QByteArray &data) : bytes(data)
    {
        buffer.open(QIODevice::ReadOnly);
        stream.setDevice(&buffer);
        stream.setByteOrder(QDataStream::BigEndian);
    }
};

// What a record's GetBinary writes on a fresh stream.
inline QByteArray binaryOf(const Morvane::Record &record, int id, bool writeId)
{
    BinaryWriter writer;
    record.GetBinary(writer.stream, id, writeId);
    return writer.bytes;
}

// What a record's GetXml writes into a writer without formatting.
inline QString xmlOf(const Morvane::Record &record)
{
    QString text;
    QXmlStreamWriter writer(&text);
    record.GetXml(writer);
    return text;
}

// A reader standing on the first start element of the text.
struct XmlReader
{
    QXmlStreamReader reader;

    explicit XmlReader(const QString &text) : reader(text)
    {
        while (!reader.atEnd() && !reader.isStartElement())
            reader.readNext();
    }
};

// Everything a reader may change in a record, in a form that compares
// exactly: the content as operator== sees it is checked apart; this adds the
// current slots of unset members, through the form written with validation
// off (mandatory members are written whatever their state).
template <class R>
QByteArray unvalidatedBinary(const R &record)
{
    R copy(record);
    copy.SetValidate(false);
    return copy.GetBinaryRepresentationAsQByteArray();
}

template <class R>
QString unvalidatedXml(const R &record)
{
    R copy(record);
    copy.SetValidate(false);
    return copy.GetXmlString();
}

// Succeeds when f throws exactly E with exactly this message.
template <class E, class F>
::testing::AssertionResult throwsWith(F &&f, const QString &message)
{
    try {
        f();
    } catch (const E &e) {
        if (typeid(e) != typeid(E))
            return ::testing::AssertionFailure() << "threw the subclass " << typeid(e).name();
        if (e.GetMessage() != message) {
            return ::testing::AssertionFailure() << "message was \"" << e.GetMessage().toStdString()
                                                 << "\", expected \"" << message.toStdString() << "\"";
        }
        return ::testing::AssertionSuccess();
    } catch (const ORBELIN::ReportException &e) {
        return ::testing::AssertionFailure() << "threw " << e.GetExceptionName().toStdString() << " \""
                                             << e.GetMessage().toStdString() << "\"";
    } catch (const std::exception &e) {
        return ::testing::AssertionFailure() << "threw std::exception \"" << e.what() << "\"";
    }
    return ::testing::AssertionFailure() << "nothing was thrown";
}

} // namespace testsupport

#endif
