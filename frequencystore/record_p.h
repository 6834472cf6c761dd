#ifndef MORVANE_RECORD_P_H
#define MORVANE_RECORD_P_H

// What the parts of the record runtime share (record.cpp: block, members,
// enumerations and choice; record_check.cpp: completeness, Check and
// equality; record_xml.cpp and record_binary.cpp: the two written forms).
// Not installed.

#include "frequencystore/record.h"

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

namespace Morvane {
namespace runtime {

using detail::Kind;
using detail::MemberInfo;
using detail::RecordData;
using detail::Slot;
using detail::Use;
using detail::Xml;

// The tag under which a versioned record writes its version, first in its
// binary body.
constexpr quint32 VersionTag = 0xe25fbba8u;

inline const QString &versionAttribute()
{
    static const QString name = QStringLiteral("Version");
    return name;
}

inline bool isPlain(Kind kind)
{
    switch (kind) {
    case Kind::Record:
    case Kind::RecordVector:
    case Kind::StringVector:
    case Kind::DoubleVector:
    case Kind::Reserved:
        return false;
    default:
        return true;
    }
}

inline bool isVector(Kind kind)
{
    return kind == Kind::RecordVector || kind == Kind::StringVector || kind == Kind::DoubleVector;
}

// Writes a length patched afterwards, then what `body` writes: the length
// counts the body's bytes. The stream's device must be seekable.
template <class F>
void writeWithLength(QDataStream &stream, F body)
{
    QIODevice *device = stream.device();
    stream << qint32(0);
    const qint64 start = device->pos();
    body();
    const qint64 end = device->pos();
    device->seek(start - 4);
    stream << qint32(end - start);
    device->seek(end);
}

// A member frame: tag, length, value.
template <class F>
void writeFrame(QDataStream &stream, quint32 tag, F body)
{
    stream << qint32(tag);
    writeWithLength(stream, body);
}

inline QByteArray utf8(const QString &text)
{
    return text.isNull() ? QByteArray() : text.toUtf8();
}

// A mandatory nested record that both writers write whether it is set or
// not, and that Check tests with validation on; one marked written-when-set
// is written only when set, and tested when written.
inline bool alwaysWritten(const MemberInfo &m)
{
    return m.use == Use::Mandatory && !(m.flags & detail::WrittenWhenSet);
}

inline QString doubleText(double value, const MemberInfo &m)
{
    return QStringLiteral("%1").arg(value, m.width, 'f', m.precision, QLatin1Char(' '));
}

// A document older than the schema: the version texts are compared as 32-bit
// floats, so that 1.2 counts as greater than 1.10. Equal texts need no
// conversion.
inline bool olderDocument(detail::RecordData &data, const QString &version)
{
    const QString &loaded = *data.loadedVersion();
    return loaded != version && version.toFloat() > loaded.toFloat();
}

// The reverse test, written apart: a version text that reads as NaN is
// neither older nor current.
inline bool currentOrNewerDocument(detail::RecordData &data, const QString &version)
{
    const QString &loaded = *data.loadedVersion();
    return loaded == version || loaded.toFloat() >= version.toFloat();
}

// A text read from XML or binary as a QString member: an empty text is an
// empty string, never the null one.
inline QString stringValue(const QString &text)
{
    return text.isEmpty() ? QString(QLatin1String("")) : text;
}

} // namespace runtime

// --- how the flag and logger reach the tree --------------------------------------
//
// Every read, write and Check hands the record's validation flag and logger to
// every record below it, so that the flag set on a root governs the tree. Done
// at every level of every call, that is a walk over the whole subtree per call:
// a list that has read k entries would walk all k again for the next one, and
// reading or writing a list would cost the square of its length.
//
// So only the outermost call pushes, once, over the whole tree (PushScope). The
// calls it makes on the records below it (their GetXml, GetBinary, SetBinary,
// Check, ProcessXml) run inside its scope and skip the walk: nothing between
// the outermost push and those calls changes a flag or a logger in the tree,
// so every record already holds what its own push would give it. Records that
// enter the tree during the call are handed the flag and logger as they come:
// - an item being read (XML or binary) is made fresh, given the parent's flag
//   and logger before it is read, and moved into the vector, so it keeps both;
// - a new block hands its owner's flag and logger to its nested records
//   (initData);
// - a record whose nested blocks are replaced during a read (a versioned
//   record that starts an older document from its defaults) pushes again over
//   its own subtree, which is small then: its vectors are empty.
// After any read, write or Check every record of the tree therefore holds the
// root's flag and logger, also the last item read (a copy would drop the
// logger), at a cost linear in the size of the tree.
//
// The scope is per thread: a record tree belongs to one thread at a time.

class PushScope
{
public:
    // Pushes unless an enclosing call has pushed already; `again` pushes in any
    // case (the record's nested blocks have just been replaced).
    explicit PushScope(const Record &record, bool again = false);
    ~PushScope();
    PushScope(const PushScope &) = delete;
    PushScope &operator=(const PushScope &) = delete;
};

// Attributes first, then the character data, then elements and children, each
// group in table order. Both written forms follow this order.
template <class F>
void Record::forEachInWriteOrder(F f) const
{
    const detail::RecordDescriptor &desc = descriptor();
    for (detail::Xml group : {detail::Xml::Attribute, detail::Xml::Text}) {
        for (int i = 0; i < desc.memberCount; ++i) {
            if (desc.members[i].xml == group)
                f(i);
        }
    }
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].xml != detail::Xml::Attribute && desc.members[i].xml != detail::Xml::Text)
            f(i);
    }
}

} // namespace Morvane

#endif
