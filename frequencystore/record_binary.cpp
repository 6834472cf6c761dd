#include "frequencystore/record_p.h"

#include "frame/converters.h"
#include "frame/exceptions.h"
#include "frame/qtcompat.h"

#include <QtCore/QBuffer>
#include <QtCore/QtEndian>

#include <cstring>

namespace Morvane {

using namespace runtime;

// --- reading: the input --------------------------------------------------------------------
//
// The binary form is read through a QDataStream, and on a stream over a
// QBuffer (what the library's own entry points make, LoadBinary included) the
// bytes are taken straight from the buffer's memory instead of one device read
// per field. What QDataStream would do is kept to the byte: a field that lies
// whole in the buffer decodes the same way (the stream's byte order, a
// QByteArray's 32-bit size with 0xffffffff for the null array); a field that
// does not (a damaged or truncated tail), every other device, and the version
// text go through the stream itself, so that values, status and position are
// the stream's own. The device is put on the input's position before each such
// read and when the input ends.
class BinaryInput
{
public:
    explicit BinaryInput(QDataStream &stream) : m_stream(stream)
    {
        QBuffer *buffer = qobject_cast<QBuffer *>(stream.device());
        if (buffer && buffer->isReadable() && !buffer->isTextModeEnabled() && !buffer->isTransactionStarted()
            && Compat::classicSizes(stream)) {
            m_buffer = buffer;
            m_bytes = buffer->data().constData();
            m_size = buffer->data().size();
            m_pos = buffer->pos();
            m_bigEndian = stream.byteOrder() == QDataStream::BigEndian;
        }
    }
    ~BinaryInput()
    {
        if (m_buffer)
            m_buffer->seek(m_pos);
    }
    BinaryInput(const BinaryInput &) = delete;
    BinaryInput &operator=(const BinaryInput &) = delete;

    QDataStream::Status status() const { return m_stream.status(); }
    bool atEnd() const { return m_buffer ? m_pos >= m_size : m_stream.atEnd(); }
    qint64 bytesAvailable() const
    {
        if (m_buffer)
            return m_size - m_pos;
        return m_stream.device() ? m_stream.device()->bytesAvailable() : 0;
    }

    qint32 readInt32() { return read<qint32>(); }
    qint64 readInt64() { return read<qint64>(); }
    bool readBool() { return read<qint8>() != 0; }

    QByteArray readBytes()
    {
        QByteArray bytes;
        if (!readWhole([&bytes](const char *data, int size) { bytes = data ? QByteArray(data, size) : QByteArray(); }))
            viaStream([&bytes](QDataStream &stream) { stream >> bytes; });
        return bytes;
    }

    // A text: the UTF-8 bytes of a QByteArray made into a QString, as
    // QString::fromUtf8 of the array read would make it (null for the null
    // array, empty for an empty one).
    QString readText()
    {
        QString text;
        const auto make = [&text](const char *data, int size) {
            text = !data ? QString() : size == 0 ? QString(QLatin1String("")) : QString::fromUtf8(data, size);
        };
        return readWhole(make) ? text : QString::fromUtf8(readBytes());
    }

    // Skips `length` bytes that lie whole in the buffer; false when they do not.
    bool skip(qint64 length)
    {
        if (!has(length))
            return false;
        m_pos += length;
        return true;
    }

    // Runs f on the stream itself, standing where the input stands.
    template <class F>
    void viaStream(F f)
    {
        if (m_buffer)
            m_buffer->seek(m_pos);
        f(m_stream);
        if (m_buffer)
            m_pos = m_buffer->pos();
    }

private:
    bool has(qint64 count) const { return m_buffer && m_size - m_pos >= count; }

    // A QByteArray's frame that lies whole in the buffer: `use` gets its bytes
    // (null for the null array) and true is returned. False, with nothing
    // read, when it does not lie whole there.
    template <class F>
    bool readWhole(F use)
    {
        if (!has(4))
            return false;
        const quint32 size = decode<quint32>(m_pos);
        if (size == 0xffffffffu) {
            m_pos += 4;
            use(nullptr, 0);
            return true;
        }
        if (!has(4 + qint64(size)))
            return false;
        use(m_bytes + m_pos + 4, int(size));
        m_pos += 4 + qint64(size);
        return true;
    }

    template <class T>
    T decode(qint64 at) const
    {
        T value;
        std::memcpy(&value, m_bytes + at, sizeof(T));
        return m_bigEndian ? qFromBigEndian(value) : qFromLittleEndian(value);
    }

    template <class T>
    T read()
    {
        T value = 0;
        if (has(sizeof(T))) {
            value = decode<T>(m_pos);
            m_pos += sizeof(T);
        } else {
            viaStream([&value](QDataStream &stream) { stream >> value; });
        }
        return value;
    }

    QDataStream &m_stream;
    QBuffer *m_buffer = nullptr;
    const char *m_bytes = nullptr;
    qint64 m_size = 0;
    qint64 m_pos = 0;
    bool m_bigEndian = true;
};

// --- binary ------------------------------------------------------------------------------

bool Record::GetBinary(QDataStream &stream, int id, bool writeId) const
{
    PushScope scope(*this);
    if (!readyToWrite())
        return false;
    initData();
    if (writeId)
        stream << qint32(id);
    writeWithLength(stream, [&] {
        if (descriptor().isVersioned())
            writeFrame(stream, VersionTag, [&] { stream << descriptor().version; });
        forEachInWriteOrder([&](int i) { writeBinaryMember(stream, i); });
    });
    return true;
}

void Record::writeBinaryMember(QDataStream &stream, int member) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    const bool present = data->present.testBit(member);
    if (m.use == Use::Choice && m.choiceValue != data->currentChoice)
        return;
    if (m.kind == Kind::Record) {
        // A nested record is made only when it is written.
        if (alwaysWritten(m) || present)
            static_cast<const Record *>(data->slot(member, Slot::Current))->GetBinary(stream, int(m.tag), true);
        return;
    }
    void *current = data->slot(member, Slot::Current);
    switch (m.kind) {
    case Kind::RecordVector:
        if ((m.flags & detail::OmittedWhenEmpty) && m.vector->size(current) == 0)
            return;
        writeFrame(stream, m.tag, [&] {
            const int n = m.vector->size(current);
            stream << qint32(n);
            if (present) {
                for (int k = 0; k < n; ++k)
                    m.vector->at(current, k).GetBinary(stream, int(m.tag), false);
            }
        });
        return;
    case Kind::StringVector:
        writeFrame(stream, m.tag, [&] {
            const QVector<QString> &items = *static_cast<const QVector<QString> *>(current);
            stream << qint32(items.size());
            if (present) {
                for (const QString &item : items)
                    stream << utf8(item);
            }
        });
        return;
    case Kind::DoubleVector:
        writeFrame(stream, m.tag, [&] {
            const QVector<double> &items = *static_cast<const QVector<double> *>(current);
            stream << qint32(items.size());
            if (present) {
                for (double item : items)
                    stream << utf8(doubleText(item, m));
            }
        });
        return;
    default:
        break;
    }
    // A plain branch of a choice is written when selected, without a test.
    if (m.use == Use::Optional && !present)
        return;
    writeFrame(stream, m.tag, [&] {
        switch (m.kind) {
        case Kind::Bool:
            stream << *static_cast<const bool *>(current);
            break;
        case Kind::Int:
            if (m.flags & detail::Raw32)
                stream << qint32(*static_cast<const int *>(current));
            else
                stream << qint64(*static_cast<const int *>(current));
            break;
        case Kind::UInt:
            if (m.flags & detail::Raw32)
                stream << quint32(*static_cast<const unsigned *>(current));
            else
                stream << qint64(*static_cast<const unsigned *>(current));
            break;
        default:
            stream << utf8(textOf(member));
            break;
        }
    });
}

int Record::memberByTag(quint32 tag) const
{
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].tag == tag && desc.members[i].kind != Kind::Reserved)
            return i;
    }
    return -1;
}

void Record::SetBinary(QDataStream &stream, int length)
{
    PushScope scope(*this);
    BinaryInput input(stream);
    readBody(input, length);
}

// The body of a record: member frames whose lengths must add up to the body's
// length. Nested records and items are read through this same function on the
// same input (inside the push of the outermost SetBinary).
void Record::readBody(BinaryInput &input, int length)
{
    data();
    const detail::RecordDescriptor &desc = descriptor();
    // `remaining` is kept wide, so that a length near the integer limit does
    // not overflow; an overrun is a negative remainder.
    qint64 remaining = length;
    while (remaining > 0 && !input.atEnd() && input.status() == QDataStream::Ok) {
        const qint32 tag = input.readInt32();
        const qint32 size = input.readInt32();
        remaining -= 8 + qint64(size);
        if (input.status() != QDataStream::Ok)
            break;
        if (desc.isVersioned() && quint32(tag) == VersionTag) {
            RecordData *data = this->data();
            input.viaStream([data](QDataStream &stream) { stream >> *data->loadedVersion(); });
            if (olderDocument(*data, desc.version)) {
                ResetToDefault();
                // The nested blocks were replaced: hand them the flag and
                // logger again (the vectors are empty now, so this is cheap).
                pushDown();
            }
            continue;
        }
        const int member = memberByTag(quint32(tag));
        if (member >= 0)
            readBinaryMember(input, member, size);
        else if (size > 0 && !input.skip(size))
            input.viaStream([&](QDataStream &stream) { skipCurrentElement(stream, size, tag); });
    }
    if (remaining != 0 || input.status() != QDataStream::Ok) {
        throw ORBELIN::BinaryParsingException(
            GetObjectName()
            + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation"));
    }
}

void Record::readBinaryMember(BinaryInput &input, int member, int length)
{
    const MemberInfo &m = descriptor().members[member];
    switch (m.kind) {
    case Kind::Record:
        markSet(member);
        static_cast<Record *>(data()->slot(member, Slot::Current))->readBody(input, length);
        markSet(member);
        return;
    case Kind::RecordVector: {
        const qint32 count = input.readInt32();
        // Reserve no more than the bytes left could hold (four per item): a
        // damaged count or length must not make a huge allocation.
        const qint64 left = qMin<qint64>(length, input.bytesAvailable());
        const qint64 room = qMax<qint64>(0, qMin<qint64>(count, left / 4));
        void *vector = data()->slot(member, Slot::Current);
        m.vector->reserve(vector, int(m.vector->size(vector) + room));
        // As many items as the count says: a stream that ends before them is
        // a length error (the item's read past the end), not a shorter vector.
        for (qint32 k = 0; k < count && input.status() == QDataStream::Ok; ++k) {
            const qint32 itemLength = input.readInt32();
            // A fresh item with this record's flag and logger (it has no block
            // yet, so this costs nothing), moved into the vector once read.
            std::unique_ptr<Record> item = m.vector->make();
            item->SetValidate(GetValidate());
            item->SetLogger(GetLogger());
            item->readBody(input, itemLength);
            appendMoved(member, *item);
        }
        return;
    }
    case Kind::StringVector:
    case Kind::DoubleVector: {
        const qint32 count = input.readInt32();
        for (qint32 k = 0; k < count && input.status() == QDataStream::Ok; ++k) {
            if (m.kind == Kind::DoubleVector)
                appendDouble(member, ORBELIN::Converters::ToDouble(input.readBytes()));
            else
                setFromText(member, input.readText());
        }
        return;
    }
    case Kind::Bool:
        setBool(member, input.readBool());
        return;
    case Kind::Int:
    case Kind::UInt:
        if (m.flags & detail::Raw32) {
            const qint32 value = input.readInt32();
            m.kind == Kind::Int ? setInt(member, value) : setUInt(member, unsigned(value));
        } else {
            const qint64 value = input.readInt64();
            m.kind == Kind::Int ? setInt(member, int(value)) : setUInt(member, unsigned(value));
        }
        return;
    case Kind::Double:
        setDouble(member, ORBELIN::Converters::ToDouble(input.readBytes()));
        return;
    default:
        setFromText(member, input.readText());
        return;
    }
}

} // namespace Morvane
