#ifndef ORBELIN_IORBELINOBJECT_H
#define ORBELIN_IORBELINOBJECT_H

#include "frame/exceptions.h"
#include "frame/logger.h"
#include "frame/morvane_global.h"
#include "frame/objecttypes.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <functional>
#include <memory>

class QDataStream;
class QFile;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace ORBELIN {

// The base of every record: object name, object type, the record's 64-bit id,
// the validation flag and the logger, plus the generic text and binary entry
// points that every record shares.
//
// Decisions of this implementation:
// - Validation is ON for a new object. Set it off on the root of a tree
//   (SetValidate(false)) to store and write values unchecked.
// - The entry points that return bool never leave a record half read: when
//   they fail, the record holds exactly what it held before the call.
//   * SetXmlString(text, throwOnError = false): false for a text that is not
//     well-formed XML or whose root element is not the object's name. A
//     failure of the record itself (OutOfRangeException, InvalidXmlException,
//     ...) gives false too, or is rethrown when throwOnError is true.
//   * LoadXml(...): false when the file cannot be opened or is not well-formed
//     XML; failures of the record are thrown (SetXmlString with throwOnError).
//   * SetBinaryRepresentation(...), LoadBinary(...): false for every failure:
//     a short stream, another record's id, a length error. Nothing is thrown.
//   * SaveXml(...): false when the file cannot be written; failures of the
//     record (Check) are thrown, and the file is then not touched. The file
//     is replaced only once all of it is written (QSaveFile): a write that
//     fails leaves an existing file as it was.
// - The binary frame is the record's id (32 bits), the body's length and the
//   body. The id read back must be the record's own. The entry points that
//   make their own stream (the QByteArray forms, LoadBinary) use data stream
//   version Qt_5_15 and big-endian byte order, whatever the Qt major.
// - The compressed forms are qCompress of the plain representation; the
//   stream form writes that array as a QByteArray.
class MORVANE_EXPORT IOrbelinObject
{
public:
    explicit IOrbelinObject(ObjectTypes type = OT_Record);
    virtual ~IOrbelinObject();

    virtual bool HasData() const = 0;
    virtual void Reset() = 0;
    virtual void Check(bool b) const = 0;
    virtual void Check() const;

    // The base's test of a plain value: NaN, a null string and an invalid
    // date-time are invalid, everything else is valid.
    virtual bool IsValid(bool value) const;
    virtual bool IsValid(int value) const;
    virtual bool IsValid(unsigned int value) const;
    virtual bool IsValid(qint64 value) const;
    virtual bool IsValid(float value) const;
    virtual bool IsValid(double value) const;
    virtual bool IsValid(const QString &value) const;
    virtual bool IsValid(const QDateTime &value) const;
    // The base's invalid value of a type: -1, the largest unsigned, NaN, the
    // null string.
    virtual void SetInvalid(int &value) const;
    virtual void SetInvalid(unsigned int &value) const;
    virtual void SetInvalid(qint64 &value) const;
    virtual void SetInvalid(float &value) const;
    virtual void SetInvalid(double &value) const;
    virtual void SetInvalid(QString &value) const;

    virtual void GetXml(QXmlStreamWriter &writer) const = 0;
    virtual bool GetBinary(QDataStream &stream, int id, bool writeId) const = 0;
    virtual void SetBinary(QDataStream &stream, int length) = 0;

    virtual bool SetXmlString(const QString &text, bool throwOnError = false);
    virtual bool SetBinaryRepresentation(QDataStream &stream);
    virtual bool SetBinaryRepresentation(QByteArray &data);
    // Exists for the interface's sake; changes nothing and answers false.
    virtual bool MergeOrbelinObject(const IOrbelinObject &other);
    virtual ObjectTypes GetObjectType() const;
    virtual const QString &GetObjectName() const;
    virtual void ProcessXml(QXmlStreamReader &reader);
    virtual QString GetXmlString() const;
    virtual void GetBinaryRepresentation(QDataStream &stream) const;
    virtual QByteArray GetBinaryRepresentationAsQByteArray() const;
    virtual void GetCompressedBinaryRepresentation(QDataStream &stream, int level) const;
    virtual QByteArray GetCompressedBinaryRepresentationAsQByteArray(int level) const;
    virtual bool LoadXml(const QString &fileName);
    virtual bool LoadXml(QFile *file);
    virtual bool LoadBinary(QFile *file);
    virtual bool SaveXml(const QString &fileName) const;
    virtual void SetValidate(bool validate) const;
    virtual bool GetValidate() const;
    virtual void SetLogger(std::shared_ptr<Logger> logger) const;
    virtual void ResetLogger() const;
    // The schema version of the object; empty for all but the versioned
    // records.
    virtual const QString &GetVersion() const;
    virtual void SetObjectType(ObjectTypes type);

    // The reverse of GetCompressedBinaryRepresentationAsQByteArray.
    bool SetCompressedBinaryRepresentation(const QByteArray &data);

    std::shared_ptr<Logger> GetLogger() const;
    // Skips the `length` bytes of an element the record does not know.
    int skipCurrentElement(QDataStream &stream, int length, int tag) const;

protected:
    IOrbelinObject(const IOrbelinObject &other);
    // The object moves whole: name, type, id, flag and logger. The source
    // keeps its name, type and id.
    IOrbelinObject(IOrbelinObject &&other) noexcept;
    IOrbelinObject &operator=(const IOrbelinObject &other);

    virtual void SetObjectName(const QString &name);
    // For a name that outlives the object (a record's class name): the object
    // keeps a pointer to it, not a copy.
    void SetStaticObjectName(const QString *name);
    // Called by the element loop of ProcessXml with the reader on a child's
    // start element. The base skips the child.
    virtual void ProcessXmlStartElement(QXmlStreamReader &reader);
    // With the reader on a start element: the element's character data (that
    // of nested elements included); the reader is left on its end element.
    QString GetTextValue(QXmlStreamReader &reader);

    // What a failed read restores: the returned function puts the object back
    // as it is now. The base has nothing to keep.
    virtual std::function<void()> SaveState() const;

    qint64 m_id = 0;

private:
    void dropName();

    // A record tree holds a great many objects, so the name is one pointer:
    // to a name that outlives the object, or to a copy the object owns.
    const QString *m_objectName = nullptr;
    ObjectTypes m_objectType;
    bool m_ownsName = false;
    mutable bool m_validate = true;
    mutable std::shared_ptr<Logger> m_logger;
};

} // namespace ORBELIN

#endif
