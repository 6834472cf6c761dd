#ifndef MORVANE_RECORD_H
#define MORVANE_RECORD_H

#include "frame/iorbelinobject.h"
#include "frequencystore/recorddescriptor.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

class QXmlStreamAttributes;

namespace Morvane {

class BinaryInput;

// The runtime of every record class. A record holds one pointer to its private
// block, created on first use and shared copy-on-write between copies; the
// block holds a current and a default slot per member, the presence bits and
// the default bits. Every algorithm of the record frame lives here once and
// works from the record's descriptor: presence and defaults, Check, equality,
// the XML and binary forms, enumerations, repeated members and choice groups.
// The generated classes add only their typed accessors.
//
// A record object belongs to one thread at a time: even its const operations
// may unshare the block they hold.
class MORVANE_EXPORT Record : public ORBELIN::IOrbelinObject
{
public:
    ~Record() override;

    bool IsInitialized() const;
    bool HasData() const override;
    bool AnyData() const;
    void Reset() override;
    void ResetToDefault();
    void Check(bool b) const override;
    void Check() const override;

    void GetXml(QXmlStreamWriter &writer) const override;
    bool GetBinary(QDataStream &stream, int id, bool writeId) const override;
    void SetBinary(QDataStream &stream, int length) override;
    void ProcessXml(QXmlStreamReader &reader) override;

    void SetValidate(bool validate) const override;
    void SetLogger(std::shared_ptr<ORBELIN::Logger> logger) const override;
    const QString &GetVersion() const override;
    void SetObjectType(ORBELIN::ObjectTypes type) override;

protected:
    explicit Record(const detail::RecordDescriptor &descriptor);
    // The copy: shares the source's block, takes over its validation flag (not
    // its logger) and then makes the block private.
    Record(const detail::RecordDescriptor &descriptor, const Record &other);
    // The move: block, flag and logger go over whole, the source is left
    // fresh. A vector that grows moves its items this way, so an item keeps
    // its flag and logger and its block is not cloned.
    Record(Record &&other) noexcept;
    // Shares the source's block; flag, logger and name stay.
    void assign(const Record &other);
    // Takes the source's block; flag, logger and name stay. The source is
    // left fresh.
    void assign(Record &&other) noexcept;

    virtual const detail::RecordDescriptor &descriptor() const = 0;

    void ProcessXmlStartElement(QXmlStreamReader &reader) override;
    // The reader of records whose content is character data with attributes.
    void ReadValuesFromXml(QXmlStreamReader &reader);
    std::function<void()> SaveState() const override;

    // --- for the generated accessors ----------------------------------------
    // The block, created and made private first.
    detail::RecordData *data() const;
    template <class T>
    T &slot(int member, detail::Slot which = detail::Slot::Current) const
    {
        return *static_cast<T *>(data()->slot(member, which));
    }
    template <class T>
    T &recordSlot(int member, detail::Slot which = detail::Slot::Current) const
    {
        return static_cast<T &>(*static_cast<Record *>(data()->slot(member, which)));
    }

    bool isSet(int member) const;
    void resetMember(int member);
    void markDefault(int member);
    // Sets the presence bit; a choice branch is also selected.
    void markSet(int member);

    void setDouble(int member, double value);
    void setInt(int member, int value);
    void setUInt(int member, unsigned int value);
    void setBool(int member, bool value);
    void setString(int member, const QString &value);
    void setDateTime(int member, const QDateTime &value);
    void setEnum(int member, int value);
    void setRecord(int member, const Record &value);
    void setDefaultRecord(int member, const Record &value);
    template <class T>
    void setVector(int member, const QVector<T> &value)
    {
        slot<QVector<T>>(member) = value;
        markSet(member);
    }
    // The non-const getters of nested and repeated members: present from now
    // on, and a choice branch is selected.
    template <class T>
    T &mutableRecord(int member)
    {
        markSet(member);
        return recordSlot<T>(member);
    }
    template <class T>
    T &mutableSlot(int member)
    {
        markSet(member);
        return slot<T>(member);
    }

    void appendRecord(int member, const Record &item);
    // As appendRecord, but the item is moved in: it keeps its flag and logger
    // and its block is not cloned. The readers append the items they read
    // this way.
    void appendMoved(int member, Record &item);
    void appendString(int member, const QString &item);
    void appendDouble(int member, double item);

    bool isValidNumber(int member, double value) const;
    bool isValidEnum(int member, int value) const;
    static bool isValidString(const QString &value) { return !value.isNull(); }

    QString enumToName(int member, int value) const;
    int nameToEnum(int member, const QString &name) const;
    QString enumAsString(int member) const;
    const int &invalidEnum(int member) const;
    void setInvalidEnum(int member, int value);

    const int &currentChoice() const;
    void resetChoice();
    void initChoice(int value);
    QString choiceToName(int value) const;
    int nameToChoice(const QString &name) const;
    bool isValidChoice(int value) const;
    const int &invalidChoice() const;
    void setInvalidChoice(int value);

    const QString &initialVersionLoaded() const;
    bool equals(const Record &other) const;

    // The names through the translation context, for the GUI lists.
    static QStringList translated(const char *context, const char *const *names, int count);

private:
    friend class PushScope;
    // Hands this record's flag and logger to every record below it, in one
    // walk (what SetValidate(GetValidate()) and SetLogger(GetLogger()) do).
    void pushDown() const;
    // Notes in the block what was handed down to its nested records, for
    // those made later.
    void handedDown(bool validate) const;
    void handedDown(const std::shared_ptr<ORBELIN::Logger> &logger) const;
    detail::RecordData *block() const;
    void initData() const;
    void constNoClearReset() const;
    void resetSlot(int member) const;
    bool filled(int member, bool forHasData) const;
    bool isValidSlot(int member, detail::Slot which) const;
    void setFromSlot(int member, detail::Slot which);
    void setFromText(int member, const QString &text);
    void storeAttribute(int member, const QString &text);
    void readAttributes(const QXmlStreamAttributes &attributes);
    QString textOf(int member, detail::Slot which = detail::Slot::Current) const;
    QString pleaseSet(int member) const;
    ORBELIN::IncompleteDefinitionException incompleteChild(int member) const;
    ORBELIN::IncompleteDefinitionException incompleteItem(const detail::MemberInfo &m) const;
    bool readyToWrite() const;
    void checkChoice(bool b) const;
    void checkMember(int member, bool b) const;
    void writeXmlMember(QXmlStreamWriter &writer, int member) const;
    void writeBinaryMember(QDataStream &stream, int member) const;
    void readBody(BinaryInput &input, int length);
    void readBinaryMember(BinaryInput &input, int member, int length);
    int memberByTag(quint32 tag) const;
    int branchMember(int choice) const;
    template <class F>
    void forEachInWriteOrder(F f) const;
    template <class F>
    void forEachChild(const detail::RecordDescriptor &desc, F f) const;

    mutable detail::DataPtr d;
};

namespace detail {

// A nested record made on first use, which costs one pointer until then; a
// slot never made holds what a fresh record holds. The default slots of
// nested and repeated records are such slots (almost no record ever sets
// one), and so are the current slots of nested records: most nested records
// of a tree are never used (a demodulator holds sixteen variants, an entry
// ten nested records). A current slot made later starts with the flag and
// logger its block last handed down, which is what it would hold had it been
// there from the start.
template <class T>
class LazySlot
{
public:
    LazySlot() = default;
    LazySlot(const LazySlot &other) : m_value(other.m_value ? new T(*other.m_value) : nullptr) {}
    LazySlot &operator=(const LazySlot &) = delete;

    // The record, made first when `make` says so and there is none yet;
    // `block` is given for a current slot.
    T *get(bool make, const RecordData *block = nullptr)
    {
        if (!m_value && make) {
            m_value.reset(new T);
            if (block && !block->childValidate)
                m_value->SetValidate(false);
            if (block && block->childLogger)
                m_value->SetLogger(block->childLogger);
        }
        return m_value.get();
    }

private:
    std::unique_ptr<T> m_value;
};

// The operations of a QVector<T> of records, for the runtime.
template <class T>
const VectorOps *vectorOps()
{
    static const VectorOps ops = {
        [](const void *v) { return int(static_cast<const QVector<T> *>(v)->size()); },
        [](const void *v, int i) -> const Record & { return static_cast<const QVector<T> *>(v)->at(i); },
        [](void *v, const Record &item) { static_cast<QVector<T> *>(v)->append(static_cast<const T &>(item)); },
        [](void *v, Record &item) { static_cast<QVector<T> *>(v)->append(std::move(static_cast<T &>(item))); },
        [](void *v) { static_cast<QVector<T> *>(v)->detach(); },
        [](void *v) { static_cast<QVector<T> *>(v)->clear(); },
        [](void *v, int n) {
            // QVector::reserve of Qt 6 copies the items it keeps; they are
            // moved here instead, so that they keep their flag and logger
            // and are not cloned.
            QVector<T> &vector = *static_cast<QVector<T> *>(v);
            if (n <= vector.capacity())
                return;
            QVector<T> grown;
            grown.reserve(n);
            for (T &item : vector)
                grown.append(std::move(item));
            vector.swap(grown);
        },
        []() -> std::unique_ptr<Record> { return std::unique_ptr<Record>(new T); },
    };
    return &ops;
}

} // namespace detail
} // namespace Morvane

#endif
