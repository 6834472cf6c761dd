#ifndef MORVANE_RECORDDESCRIPTOR_H
#define MORVANE_RECORDDESCRIPTOR_H

// The description of a record that the generator writes from the schema and
// the runtime (record.cpp) works from. One RecordDescriptor per record class,
// one MemberInfo per member in the order of the schema table (which is the
// order of the presence bits).

#include "frame/morvane_global.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <utility>

namespace ORBELIN {
class Logger;
}

namespace Morvane {

class Record;

namespace detail {

enum class Kind : quint8 {
    Double,
    Int,
    UInt,
    Bool,
    String,
    DateTime,
    Enum,
    Record,       // a nested record
    RecordVector, // QVector of records
    StringVector, // QVector<QString>
    DoubleVector, // QVector<double>
    // A presence bit kept free for a member that a later schema adds: it has
    // no slot, is never set, written or read.
    Reserved,
};

// How a member maps to XML.
enum class Xml : quint8 { Element, Attribute, Text, Child };

enum class Use : quint8 { Mandatory, Optional, Choice };

// The slots a member has in the block: a Default and a Current one, and for
// enumerated members an Invalid one too. (The XML reader reads the item under
// way into a record of its own, not into a slot of the block.) The default
// slot of a nested or repeated record is made on first use; MadeDefault asks
// for it without making it, and gives null when it was never made. The
// current slot of a nested record is made on first use too; MadeCurrent asks
// for it the same way (a slot never made holds a fresh record).
enum class Slot : quint8 { Default, Current, Invalid, MadeDefault, MadeCurrent };

enum MemberFlag : quint16 {
    // An int that travels as a raw 32-bit integer in binary (length 4)
    // instead of the usual 64-bit one.
    Raw32 = 0x1,
    // An empty element of this bool is an error, not its default.
    EmptyBoolThrows = 0x2,
    // An attribute that the reader also takes as a child element.
    AlsoElement = 0x4,
    // A mandatory nested record that is written only when set. Its
    // completeness is tested when the record is written with validation on
    // (after Check, which only checks it when set), not in Check.
    WrittenWhenSet = 0x8,
    // A repeated member that leaves out its binary frame (tag, length and
    // count) while the vector is empty, instead of writing count 0.
    OmittedWhenEmpty = 0x10,
};

enum RecordFlag : quint16 {
    // HasData answers true whatever the record holds.
    HasDataAlways = 0x1,
    // The record's content is character data with attributes; its ProcessXml
    // is ReadValuesFromXml.
    TextValue = 0x2,
};

// Type-erased access to a QVector<T> of records.
struct VectorOps
{
    int (*size)(const void *vector);
    const Record &(*at)(const void *vector, int index);
    void (*append)(void *vector, const Record &item);
    // Appends by moving: the item's block, flag and logger go into the vector.
    void (*appendMove)(void *vector, Record &item);
    // Makes the vector's items private to it, so that what is done to them
    // through a const item does not reach another block's vector.
    void (*detach)(void *vector);
    void (*clear)(void *vector);
    void (*reserve)(void *vector, int count);
    std::unique_ptr<Record> (*make)();
};

struct MemberInfo
{
    QString stem;      // "Longitude": the accessor stem
    QString xmlName;   // element or attribute name; for records the class
    QString fieldName; // "m_longitude": the member's name in messages
    Kind kind;
    Xml xml;
    Use use;
    quint32 tag;
    int choiceValue; // the branch's value in the choice group, else -1
    bool ranged;
    double low;
    double high;
    int width;     // field width of the text form
    int precision; // decimals of a double's text form
    const QStringList *enumNames;
    const VectorOps *vector;
    QString itemType;      // the record type of a nested or repeated member
    QString choiceMessage; // a branch's own Check text, behind the object name
    quint16 flags;
};

struct RecordData;

// One bit per member, bit n for the member at place n of the table: the
// presence bits and the default bits of a block. A record has at most 64
// members (the generator refuses more), so the bits live in the block itself
// and cost no allocation of their own.
class MemberBits
{
public:
    static constexpr int Capacity = 64;
    bool testBit(int i) const { return (m_bits >> i) & 1u; }
    void setBit(int i) { m_bits |= quint64(1) << i; }
    void clearBit(int i) { m_bits &= ~(quint64(1) << i); }
    void clear() { m_bits = 0; }

private:
    quint64 m_bits = 0;
};

struct RecordDescriptor
{
    QString className;
    QString objectName; // the XML element name
    qint64 id;
    QString version; // empty for records without a version
    const MemberInfo *members;
    int memberCount;
    // The order of Check when the schema gives one: member indexes, -1 for the
    // choice group. Empty: the choice group first, then the table order.
    const int *checkOrder;
    int checkCount;
    const QStringList *choiceNames; // null: the record has no choice group
    quint16 flags;
    RecordData *(*create)();

    bool isVersioned() const { return !version.isEmpty(); }
};

// The private block of a record. The generator derives one struct per record
// that holds the slots of its members; this base holds what all share.
struct MORVANE_EXPORT RecordData
{
    RecordData() = default;
    RecordData(const RecordData &other);
    RecordData &operator=(const RecordData &) = delete;
    virtual ~RecordData();

    virtual RecordData *clone() const = 0;
    // The address of a slot: for record members (and the default slot of
    // repeated records) a Record *, else the slot's own type.
    virtual void *slot(int member, Slot which) = 0;

    // The version text of the document this block was read from: only the
    // blocks of versioned records have one (the schema's version is the
    // descriptor's), the others give null.
    virtual QString *loadedVersion() { return nullptr; }

    QAtomicInt ref = 0;
    // The flag and logger last handed down to the nested records of this
    // block (a fresh record holds true and none): a nested record made later
    // starts with them, as if it had been in the block from the start. A copy
    // of the block takes the flag, not the logger, as a copied record does.
    bool childValidate = true;
    std::shared_ptr<ORBELIN::Logger> childLogger;
    int invalidChoice = -1;
    int currentChoice = -1;
    MemberBits present;
    MemberBits defaults;
};

// A reference-counted pointer to a block; the count is atomic.
class MORVANE_EXPORT DataPtr
{
public:
    DataPtr() = default;
    explicit DataPtr(RecordData *data);
    DataPtr(const DataPtr &other);
    DataPtr(DataPtr &&other) noexcept : m_data(other.m_data) { other.m_data = nullptr; }
    DataPtr &operator=(const DataPtr &other);
    DataPtr &operator=(DataPtr &&other) noexcept
    {
        DataPtr moved(std::move(other));
        std::swap(m_data, moved.m_data);
        return *this;
    }
    ~DataPtr();

    RecordData *get() const { return m_data; }
    explicit operator bool() const { return m_data != nullptr; }
    // Makes the block private to this pointer if others share it.
    void detach();

private:
    RecordData *m_data = nullptr;
};

} // namespace detail
} // namespace Morvane

#endif
