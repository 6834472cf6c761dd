#ifndef MORVANE_TESTS_TREETESTSUPPORT_H
#define MORVANE_TESTS_TREETESTSUPPORT_H

// Helpers shared by the tests of the records of the entry tree (stations,
// profile data, plots, location results and the entry itself): the binary
// values of nested and repeated members, the child elements of a record, and
// the checks that damaged input leaves a record as it was.

#include "recordtestsupport.h"
#include "testsupport.h"

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <QtCore/QXmlStreamReader>

namespace MorvaneTest {

// What follows the record's object name in the message of a length error.
inline const QString lengthErrorTail =
    QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation");

// The names of the root element's direct children, in document order.
inline QStringList childNames(const QString &xml)
{
    QStringList names;
    QXmlStreamReader reader(xml);
    int depth = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            ++depth;
            if (depth == 2)
                names.append(reader.name().toString());
        } else if (reader.isEndElement()) {
            --depth;
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return names;
}

// The body of a record's representation, which is also what it writes under
// its tag when it is nested in another.
template <class R>
QByteArray nestedBody(const R &record)
{
    return bodyOf(record.GetBinaryRepresentationAsQByteArray());
}

// The value of a repeated member in binary: the count, then each item's
// length and body.
template <class R>
QByteArray itemsValue(const QVector<R> &items)
{
    QByteArray value = be32(quint32(items.size()));
    for (const R &item : items) {
        const QByteArray body = nestedBody(item);
        value += be32(quint32(body.size())) + body;
    }
    return value;
}

// A copy of a representation with another length field.
inline QByteArray withLengthField(const QByteArray &rep, qint32 length)
{
    QByteArray copy = rep;
    copy.replace(4, 4, be32(quint32(length)));
    return copy;
}

// The record still holds what `before` holds: content, unset slots and bits.
template <class R>
::testing::AssertionResult keeps(const R &before, const R &after)
{
    if (!(before == after))
        return ::testing::AssertionFailure() << "the content changed: " << after;
    if (testsupport::unvalidatedBinary(before) != testsupport::unvalidatedBinary(after))
        return ::testing::AssertionFailure() << "the binary form changed";
    if (testsupport::unvalidatedXml(before) != testsupport::unvalidatedXml(after))
        return ::testing::AssertionFailure() << "the XML form changed";
    return ::testing::AssertionSuccess();
}

// Up to these sizes every cut of a representation or an XML document is
// tried; they cover the largest samples of the tree (a whole entry location).
constexpr int EveryBinaryCutUpTo = 8192;
constexpr int EveryXmlCutUpTo = 16384;

// The places to cut something of `size` at: every one below `every`, then a
// spread of about 400 more, and always the last one.
inline QVector<int> cutPoints(int size, int every)
{
    QVector<int> cuts;
    const int stride = size > every ? (size - every) / 400 + 1 : 1;
    for (int cut = 0; cut < size; cut += (cut < every ? 1 : stride))
        cuts.append(cut);
    if (size > 0 && cuts.last() != size - 1)
        cuts.append(size - 1);
    return cuts;
}

// Every truncation of the representation of `written` (a spread of them past
// EveryBinaryCutUpTo), and its length field one byte short or long, with and
// without a byte more behind it, or negative, fails to read into a copy of
// `start`, which keeps what it held. The body read directly with a wrong
// length throws the length error of the record.
template <class R>
void expectBadBinaryKeepsRecord(const R &written, const R &start)
{
    const QByteArray full = written.GetBinaryRepresentationAsQByteArray();
    ASSERT_GT(full.size(), 8);
    for (int cut : cutPoints(full.size(), EveryBinaryCutUpTo)) {
        R record = start;
        QByteArray part = full.left(cut);
        EXPECT_FALSE(record.SetBinaryRepresentation(part)) << "cut at " << cut;
        ASSERT_TRUE(keeps(start, record)) << "cut at " << cut;
    }
    const qint32 length = full.size() - 8;
    for (qint32 wrong : {length - 1, length + 1}) {
        const QByteArray bytes = withLengthField(full, wrong);
        for (const QByteArray &damaged : {bytes, bytes + QByteArray(1, '\0'), bytes + QByteArray(1, '\x01')}) {
            R record = start;
            QByteArray copy = damaged;
            EXPECT_FALSE(record.SetBinaryRepresentation(copy)) << "length " << wrong;
            EXPECT_TRUE(keeps(start, record)) << "length " << wrong;
        }
    }
    QByteArray negative = withLengthField(full, -1);
    R record = start;
    EXPECT_FALSE(record.SetBinaryRepresentation(negative));
    EXPECT_TRUE(keeps(start, record));

    for (qint32 wrong : {length - 1, length + 1, qint32(-1)}) {
        testsupport::BinaryReader reader(full.mid(8));
        R direct;
        EXPECT_THROW_MESSAGE(direct.SetBinary(reader.stream, wrong), ORBELIN::BinaryParsingException,
                             direct.GetObjectName() + lengthErrorTail);
    }
}

// Damaged XML documents of `written` give false and leave a copy of `start`
// as it was: every cut of its document before the last tag (a spread of them
// past EveryXmlCutUpTo), and a set of broken ones: cut, with a second root,
// a wrong end tag, an unknown entity, empty, no XML, another root. A cut may
// also leave a member that the record refuses (an empty bool, an incomplete
// item); that is a false result as well when the caller does not ask for the
// exception.
template <class R>
void expectBrokenXmlKeepsRecord(const R &written, const R &start)
{
    const QString full = written.GetXmlString();
    const int last = full.lastIndexOf(QLatin1Char('>'));
    ASSERT_GT(last, 0);
    for (int cut : cutPoints(last, EveryXmlCutUpTo)) {
        R record = start;
        EXPECT_FALSE(record.SetXmlString(full.left(cut))) << "cut at " << cut;
        ASSERT_TRUE(keeps(start, record)) << "cut at " << cut;
    }

    const QString document = compactXml(written);
    ASSERT_FALSE(document.isEmpty());
    const QString name = written.GetObjectName();
    const QStringList broken = {
        document.left(document.size() - 1),                        // the last end tag cut
        document.left(document.size() / 2),                        // cut in the middle
        document + QStringLiteral("<") + name + QStringLiteral(">"), // a second root
        QString(document).replace(QStringLiteral("</") + name + QStringLiteral(">"),
                                  QStringLiteral("</") + name + QStringLiteral("X>")),
        QStringLiteral("<") + name + QStringLiteral("><Name>&bogus;</Name></") + name + QStringLiteral(">"),
        QString(),
        QStringLiteral("no xml at all"),
        QStringLiteral("<Other/>"),
    };
    for (const QString &text : broken) {
        R record = start;
        EXPECT_FALSE(record.SetXmlString(text)) << text.toStdString();
        EXPECT_TRUE(keeps(start, record)) << text.toStdString();
    }
}

} // namespace MorvaneTest

#endif
