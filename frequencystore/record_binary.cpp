#include "frequencystore/record_p.h"

#include "frame/converters.h"
#include "frame/exceptions.h"

namespace Morvane {

using namespace runtime;

// --- binary ------------------------------------------------------------------------------

bool Record::GetBinary(QDataStream &stream, int id, bool writeId) const
{
    PushScope scope(*this);
    if (GetValidate()) {
        Check();
        if (!HasData())
            return false;
    }
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
    void *current = data->slot(member, Slot::Current);
    if (m.use == Use::Choice && m.choiceValue != data->currentChoice)
        return;
    switch (m.kind) {
    case Kind::Record:
        if (m.use == Use::Mandatory || present)
            static_cast<const Record *>(current)->GetBinary(stream, int(m.tag), true);
        return;
    case Kind::RecordVector:
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
    data();
    const detail::RecordDescriptor &desc = descriptor();
    // The lengths of the member frames must add up to the body's length.
    // `remaining` is kept wide, so that a length near the integer limit does
    // not overflow; an overrun is a negative remainder.
    qint64 remaining = length;
    while (remaining > 0 && !stream.atEnd() && stream.status() == QDataStream::Ok) {
        qint32 tag = 0;
        qint32 size = 0;
        stream >> tag >> size;
        remaining -= 8 + qint64(size);
        if (stream.status() != QDataStream::Ok)
            break;
        if (desc.isVersioned() && quint32(tag) == VersionTag) {
            RecordData *data = this->data();
            stream >> data->initialVersionLoaded;
            if (olderDocument(*data, desc.version)) {
                ResetToDefault();
                // The nested blocks were replaced: hand them the flag and
                // logger again (the vectors are empty now, so this is cheap).
                pushDown();
            }
            continue;
        }
        const int member = memberByTag(quint32(tag));
        if (member < 0)
            skipCurrentElement(stream, size, tag);
        else
            readBinaryMember(stream, member, size);
    }
    if (remaining != 0 || stream.status() != QDataStream::Ok) {
        throw ORBELIN::BinaryParsingException(
            GetObjectName()
            + QStringLiteral("::SetBinary(...): Length error occurred during processing of binary representation"));
    }
}

void Record::readBinaryMember(QDataStream &stream, int member, int length)
{
    const MemberInfo &m = descriptor().members[member];
    switch (m.kind) {
    case Kind::Record:
        markSet(member);
        static_cast<Record *>(data()->slot(member, Slot::Current))->SetBinary(stream, length);
        markSet(member);
        return;
    case Kind::RecordVector: {
        qint32 count = 0;
        stream >> count;
        // Reserve no more than the bytes left could hold (four per item): a
        // damaged count or length must not make a huge allocation.
        const qint64 left = stream.device() ? qMin<qint64>(length, stream.device()->bytesAvailable()) : 0;
        const qint64 room = qMax<qint64>(0, qMin<qint64>(count, left / 4));
        void *vector = data()->slot(member, Slot::Current);
        m.vector->reserve(vector, int(m.vector->size(vector) + room));
        // As many items as the count says: a stream that ends before them is
        // a length error (the item's read past the end), not a shorter vector.
        for (qint32 k = 0; k < count && stream.status() == QDataStream::Ok; ++k) {
            qint32 itemLength = 0;
            stream >> itemLength;
            std::unique_ptr<Record> item = m.vector->make();
            item->SetValidate(GetValidate());
            item->SetLogger(GetLogger());
            item->SetBinary(stream, itemLength);
            appendRead(member, *item);
        }
        return;
    }
    case Kind::StringVector:
    case Kind::DoubleVector: {
        qint32 count = 0;
        stream >> count;
        for (qint32 k = 0; k < count && stream.status() == QDataStream::Ok; ++k) {
            QByteArray item;
            stream >> item;
            if (m.kind == Kind::DoubleVector)
                appendDouble(member, ORBELIN::Converters::ToDouble(item));
            else
                setFromText(member, QString::fromUtf8(item));
        }
        return;
    }
    case Kind::Bool: {
        bool value = false;
        stream >> value;
        setBool(member, value);
        return;
    }
    case Kind::Int:
    case Kind::UInt:
        if (m.flags & detail::Raw32) {
            qint32 value = 0;
            stream >> value;
            m.kind == Kind::Int ? setInt(member, value) : setUInt(member, unsigned(value));
        } else {
            qint64 value = 0;
            stream >> value;
            m.kind == Kind::Int ? setInt(member, int(value)) : setUInt(member, unsigned(value));
        }
        return;
    case Kind::Double: {
        // A number is read from its UTF-8 bytes, with no QString between.
        QByteArray text;
        stream >> text;
        setDouble(member, ORBELIN::Converters::ToDouble(text));
        return;
    }
    default: {
        QByteArray text;
        stream >> text;
        setFromText(member, QString::fromUtf8(text));
        return;
    }
    }
}

} // namespace Morvane
