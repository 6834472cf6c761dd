#include "frame/iorbelinobject.h"

#include "frame/qtcompat.h"

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

#include <cmath>
#include <limits>

namespace ORBELIN {

namespace {

void prepare(QDataStream &stream)
{
    stream.setVersion(Morvane::Compat::StreamVersion);
    stream.setByteOrder(QDataStream::BigEndian);
}

// Runs `restore` unless the transaction was committed.
class Transaction
{
public:
    explicit Transaction(std::function<void()> restore) : m_restore(std::move(restore)) {}
    ~Transaction()
    {
        if (m_restore)
            m_restore();
    }
    void commit() { m_restore = nullptr; }

private:
    std::function<void()> m_restore;
};

} // namespace

IOrbelinObject::IOrbelinObject(ObjectTypes type) : m_objectType(type) {}

IOrbelinObject::IOrbelinObject(const IOrbelinObject &other)
    : m_id(other.m_id), m_objectName(other.m_ownsName ? new QString(*other.m_objectName) : other.m_objectName),
      m_objectType(other.m_objectType), m_ownsName(other.m_ownsName), m_validate(other.m_validate)
{
}

// The source keeps its name, so an owned one is copied (records' names are
// not owned: they cost nothing here).
IOrbelinObject::IOrbelinObject(IOrbelinObject &&other) noexcept
    : m_id(other.m_id), m_objectName(other.m_ownsName ? new QString(*other.m_objectName) : other.m_objectName),
      m_objectType(other.m_objectType), m_ownsName(other.m_ownsName), m_validate(other.m_validate),
      m_logger(std::move(other.m_logger))
{
}

// Assignment of the base copies nothing: name, id, flag and logger belong to
// the object, not to its content.
IOrbelinObject &IOrbelinObject::operator=(const IOrbelinObject &)
{
    return *this;
}

IOrbelinObject::~IOrbelinObject()
{
    dropName();
}

void IOrbelinObject::dropName()
{
    if (m_ownsName)
        delete m_objectName;
    m_objectName = nullptr;
    m_ownsName = false;
}

void IOrbelinObject::Check() const
{
    Check(false);
}

bool IOrbelinObject::IsValid(bool) const { return true; }
bool IOrbelinObject::IsValid(int) const { return true; }
bool IOrbelinObject::IsValid(unsigned int) const { return true; }
bool IOrbelinObject::IsValid(qint64) const { return true; }
bool IOrbelinObject::IsValid(float value) const { return !std::isnan(value); }
bool IOrbelinObject::IsValid(double value) const { return !std::isnan(value); }
bool IOrbelinObject::IsValid(const QString &value) const { return !value.isNull(); }
bool IOrbelinObject::IsValid(const QDateTime &value) const { return value.isValid(); }

void IOrbelinObject::SetInvalid(int &value) const { value = -1; }
void IOrbelinObject::SetInvalid(unsigned int &value) const { value = std::numeric_limits<unsigned int>::max(); }
void IOrbelinObject::SetInvalid(qint64 &value) const { value = -1; }
void IOrbelinObject::SetInvalid(float &value) const { value = std::numeric_limits<float>::quiet_NaN(); }
void IOrbelinObject::SetInvalid(double &value) const { value = std::numeric_limits<double>::quiet_NaN(); }
void IOrbelinObject::SetInvalid(QString &value) const { value = QString(); }

// Reads one document whose root element is this object. False, with the
// object as it was, for text that is not well-formed or has another root; a
// failure of the record itself is rethrown or turned into false.
static bool readDocument(IOrbelinObject &object, QXmlStreamReader &reader, bool throwOnError,
                         std::function<void()> restore)
{
    Transaction transaction(std::move(restore));
    while (!reader.atEnd() && !reader.isStartElement())
        reader.readNext();
    if (!reader.isStartElement() || Morvane::Compat::elementName(reader) != object.GetObjectName())
        return false;
    try {
        object.ProcessXml(reader);
    } catch (const ReportException &) {
        if (throwOnError)
            throw;
        return false;
    }
    // The rest of the document must be well-formed too.
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        return false;
    transaction.commit();
    return true;
}

bool IOrbelinObject::SetXmlString(const QString &text, bool throwOnError)
{
    QXmlStreamReader reader(text);
    return readDocument(*this, reader, throwOnError, SaveState());
}

bool IOrbelinObject::SetBinaryRepresentation(QDataStream &stream)
{
    Transaction transaction(SaveState());
    qint32 id = 0;
    qint32 length = 0;
    stream >> id >> length;
    if (stream.status() != QDataStream::Ok || id != qint32(m_id))
        return false;
    try {
        SetBinary(stream, length);
    } catch (const ReportException &) {
        return false;
    }
    if (stream.status() != QDataStream::Ok)
        return false;
    transaction.commit();
    return true;
}

bool IOrbelinObject::SetBinaryRepresentation(QByteArray &data)
{
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::ReadOnly))
        return false;
    QDataStream stream(&buffer);
    prepare(stream);
    return SetBinaryRepresentation(stream);
}

bool IOrbelinObject::SetCompressedBinaryRepresentation(const QByteArray &data)
{
    // qCompress puts the plain size, big-endian, ahead of the zlib stream. zlib
    // expands no byte to more than 1032, so a larger size is a damaged header:
    // refused before qUncompress would try to allocate it.
    if (data.size() < 4)
        return false;
    const quint32 expected = (quint32(uchar(data[0])) << 24) | (quint32(uchar(data[1])) << 16)
        | (quint32(uchar(data[2])) << 8) | quint32(uchar(data[3]));
    if (expected > quint64(data.size() - 4) * 1032u)
        return false;
    QByteArray plain = qUncompress(data);
    if (plain.isEmpty())
        return false;
    return SetBinaryRepresentation(plain);
}

bool IOrbelinObject::MergeOrbelinObject(const IOrbelinObject &)
{
    return false;
}

ObjectTypes IOrbelinObject::GetObjectType() const
{
    return m_objectType;
}

const QString &IOrbelinObject::GetObjectName() const
{
    static const QString none;
    return m_objectName ? *m_objectName : none;
}

void IOrbelinObject::SetObjectName(const QString &name)
{
    const QString *copy = new QString(name);
    dropName();
    m_objectName = copy;
    m_ownsName = true;
}

void IOrbelinObject::SetStaticObjectName(const QString *name)
{
    dropName();
    m_objectName = name;
}

void IOrbelinObject::SetObjectType(ObjectTypes)
{
}

// The element loop. It hands each child's start element to
// ProcessXmlStartElement and returns at the object's own end element. A child
// that the handler leaves unread (the reader still on its start tag) is
// entered, and its children are offered to this object in turn; the loop
// counts such open elements so that their end tags are not taken for its own.
void IOrbelinObject::ProcessXml(QXmlStreamReader &reader)
{
    // The object's own name needs no new string.
    const QString ownName = Morvane::Compat::nameIs(reader, GetObjectName()) ? GetObjectName()
                                                                             : Morvane::Compat::elementName(reader);
    int open = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            const qint64 offset = reader.characterOffset();
            ProcessXmlStartElement(reader);
            if (reader.isStartElement())
                open += reader.characterOffset() == offset ? 1 : 2;
        } else if (reader.isEndElement()) {
            if (open > 0)
                --open;
            else if (Morvane::Compat::nameIs(reader, ownName))
                return;
        }
    }
}

void IOrbelinObject::ProcessXmlStartElement(QXmlStreamReader &reader)
{
    reader.skipCurrentElement();
}

QString IOrbelinObject::GetTextValue(QXmlStreamReader &reader)
{
    return reader.readElementText(QXmlStreamReader::IncludeChildElements);
}

// A whole document: the declaration, then the object's element, indented.
static void writeDocument(const IOrbelinObject &object, QXmlStreamWriter &writer)
{
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    object.GetXml(writer);
    writer.writeEndDocument();
}

QString IOrbelinObject::GetXmlString() const
{
    QString text;
    QXmlStreamWriter writer(&text);
    writeDocument(*this, writer);
    return text;
}

void IOrbelinObject::GetBinaryRepresentation(QDataStream &stream) const
{
    GetBinary(stream, int(m_id), true);
}

QByteArray IOrbelinObject::GetBinaryRepresentationAsQByteArray() const
{
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    prepare(stream);
    GetBinaryRepresentation(stream);
    return data;
}

void IOrbelinObject::GetCompressedBinaryRepresentation(QDataStream &stream, int level) const
{
    stream << GetCompressedBinaryRepresentationAsQByteArray(level);
}

QByteArray IOrbelinObject::GetCompressedBinaryRepresentationAsQByteArray(int level) const
{
    return qCompress(GetBinaryRepresentationAsQByteArray(), level);
}

bool IOrbelinObject::LoadXml(const QString &fileName)
{
    QFile file(fileName);
    return LoadXml(&file);
}

bool IOrbelinObject::LoadXml(QFile *file)
{
    if (!file)
        return false;
    if (!file->isOpen() && !file->open(QIODevice::ReadOnly))
        return false;
    // The reader decodes the bytes by the document's own declaration.
    QXmlStreamReader reader(file->readAll());
    return readDocument(*this, reader, true, SaveState());
}

bool IOrbelinObject::LoadBinary(QFile *file)
{
    if (!file)
        return false;
    if (!file->isOpen() && !file->open(QIODevice::ReadOnly))
        return false;
    // The rest of the file is read into memory and the record from there,
    // which is many times faster than a device read per field. The file is
    // then put where the record ends, as a stream on it would have left it.
    const qint64 start = file->pos();
    QByteArray bytes = file->readAll();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QDataStream stream(&buffer);
    prepare(stream);
    const bool ok = SetBinaryRepresentation(stream);
    if (!file->isSequential())
        file->seek(start + buffer.pos());
    return ok;
}

bool IOrbelinObject::SaveXml(const QString &fileName) const
{
    // The document is built in memory first: a record that fails its Check
    // leaves an existing file untouched.
    QByteArray data;
    {
        QXmlStreamWriter writer(&data);
        writeDocument(*this, writer);
    }
    // It goes into a temporary file beside the target, which replaces the
    // target only when all of it was written: a failed or interrupted write
    // leaves an existing file as it was. A short write or a failed flush
    // keeps the temporary file from being committed, and it is removed.
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(data) != data.size() || !file.flush())
        return false;
    return file.commit();
}

void IOrbelinObject::SetValidate(bool validate) const
{
    m_validate = validate;
}

bool IOrbelinObject::GetValidate() const
{
    return m_validate;
}

void IOrbelinObject::SetLogger(std::shared_ptr<Logger> logger) const
{
    m_logger = std::move(logger);
}

void IOrbelinObject::ResetLogger() const
{
    m_logger.reset();
}

std::shared_ptr<Logger> IOrbelinObject::GetLogger() const
{
    return m_logger;
}

const QString &IOrbelinObject::GetVersion() const
{
    static const QString none;
    return none;
}

int IOrbelinObject::skipCurrentElement(QDataStream &stream, int length, int) const
{
    if (length <= 0)
        return 0;
    return stream.skipRawData(length);
}

std::function<void()> IOrbelinObject::SaveState() const
{
    return nullptr;
}

} // namespace ORBELIN
