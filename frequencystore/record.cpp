#include "frequencystore/record.h"

#include "frame/converters.h"
#include "frame/exceptions.h"
#include "frame/qtcompat.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace Morvane {

using detail::Kind;
using detail::MemberInfo;
using detail::RecordData;
using detail::Slot;
using detail::Use;
using detail::Xml;

namespace {

// The tag under which a versioned record writes its version, first in its
// binary body.
constexpr quint32 VersionTag = 0xe25fbba8u;

const QString &versionAttribute()
{
    static const QString name = QStringLiteral("Version");
    return name;
}

bool isPlain(Kind kind)
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

bool isVector(Kind kind)
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

QByteArray utf8(const QString &text)
{
    return text.isNull() ? QByteArray() : text.toUtf8();
}

QString doubleText(double value, const MemberInfo &m)
{
    return QStringLiteral("%1").arg(value, m.width, 'f', m.precision, QLatin1Char(' '));
}

// A text read from XML or binary as a QString member: an empty text is an
// empty string, never the null one.
QString stringValue(const QString &text)
{
    return text.isEmpty() ? QString(QLatin1String("")) : text;
}

} // namespace

// --- block -------------------------------------------------------------------

namespace detail {

RecordData::RecordData(int memberCount) : ref(0), present(memberCount), defaults(memberCount) {}

RecordData::RecordData(const RecordData &other)
    : ref(0), version(other.version), initialVersionLoaded(other.initialVersionLoaded),
      invalidChoice(other.invalidChoice), currentChoice(other.currentChoice),
      present(other.present), defaults(other.defaults)
{
}

RecordData::~RecordData() = default;

DataPtr::DataPtr(RecordData *data) : m_data(data)
{
    if (m_data)
        m_data->ref.ref();
}

DataPtr::DataPtr(const DataPtr &other) : m_data(other.m_data)
{
    if (m_data)
        m_data->ref.ref();
}

DataPtr &DataPtr::operator=(const DataPtr &other)
{
    DataPtr copy(other);
    std::swap(m_data, copy.m_data);
    return *this;
}

DataPtr::~DataPtr()
{
    if (m_data && !m_data->ref.deref())
        delete m_data;
}

void DataPtr::detach()
{
    if (m_data && m_data->ref.loadRelaxed() != 1)
        *this = DataPtr(m_data->clone());
}

} // namespace detail

// --- life cycle ----------------------------------------------------------------

Record::Record(const detail::RecordDescriptor &descriptor)
{
    SetObjectName(descriptor.objectName);
    m_id = descriptor.id;
}

Record::Record(const detail::RecordDescriptor &descriptor, const Record &other)
    : IOrbelinObject(other.GetObjectType()), d(other.d)
{
    SetObjectName(descriptor.objectName);
    m_id = descriptor.id;
    // The record's own SetValidate, on the descriptor given: this object's
    // virtual descriptor() is not there yet while it is being built.
    const bool validate = other.GetValidate();
    IOrbelinObject::SetValidate(validate);
    forEachChild(descriptor, [validate](const Record &child) { child.SetValidate(validate); });
    d.detach();
}

Record::~Record() = default;

void Record::assign(const Record &other)
{
    if (this == &other || d.get() == other.d.get())
        return;
    d = other.d;
}

detail::RecordData *Record::block() const
{
    d.detach();
    return d.get();
}

void Record::initData() const
{
    d.detach();
    if (d)
        return;
    const detail::RecordDescriptor &desc = descriptor();
    d = detail::DataPtr(desc.create());
    d.get()->version = desc.version;
    constNoClearReset();
    SetValidate(GetValidate());
    SetLogger(GetLogger());
}

RecordData *Record::data() const
{
    initData();
    return d.get();
}

bool Record::IsInitialized() const
{
    return block() != nullptr;
}

// Puts a member's current slot to its reset value: the default slot, but
// for a QString the null string and for a vector the empty one. No bit
// changes.
void Record::resetSlot(int member) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    void *current = data->slot(member, Slot::Current);
    const void *initial = m.kind == Kind::Reserved ? nullptr : data->slot(member, Slot::Default);
    switch (m.kind) {
    case Kind::Double:
        *static_cast<double *>(current) = *static_cast<const double *>(initial);
        break;
    case Kind::Int:
    case Kind::Enum:
        *static_cast<int *>(current) = *static_cast<const int *>(initial);
        break;
    case Kind::UInt:
        *static_cast<unsigned *>(current) = *static_cast<const unsigned *>(initial);
        break;
    case Kind::Bool:
        *static_cast<bool *>(current) = *static_cast<const bool *>(initial);
        break;
    case Kind::String:
        *static_cast<QString *>(current) = QString();
        break;
    case Kind::DateTime:
        *static_cast<QDateTime *>(current) = *static_cast<const QDateTime *>(initial);
        break;
    case Kind::Record:
        static_cast<Record *>(current)->assign(*static_cast<const Record *>(initial));
        break;
    case Kind::RecordVector:
        m.vector->clear(current);
        break;
    case Kind::StringVector:
        static_cast<QVector<QString> *>(current)->clear();
        break;
    case Kind::DoubleVector:
        static_cast<QVector<double> *>(current)->clear();
        break;
    case Kind::Reserved:
        break;
    }
}

void Record::constNoClearReset() const
{
    for (int i = 0, n = descriptor().memberCount; i < n; ++i)
        resetSlot(i);
    d.get()->currentChoice = d.get()->invalidChoice;
}

void Record::Reset()
{
    RecordData *data = block();
    if (!data)
        return;
    data->present.fill(false);
    constNoClearReset();
}

void Record::ResetToDefault()
{
    initData();
    Reset();
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        RecordData *data = this->data();
        if (isPlain(m.kind)) {
            if (data->defaults.testBit(i) && isValidSlot(i, Slot::Default))
                setFromSlot(i, Slot::Default);
        } else if (m.kind == Kind::Record) {
            static_cast<Record *>(data->slot(i, Slot::Current))->ResetToDefault();
        }
        // Repeated members are empty after Reset: nothing in them to reset.
    }
}

std::function<void()> Record::SaveState() const
{
    // Holding a second reference is enough: the next access of this record
    // makes its own copy of the block, and the saved one stays as it is.
    detail::DataPtr saved = d;
    return [this, saved]() { d = saved; };
}

void Record::SetObjectType(ORBELIN::ObjectTypes)
{
}

// Calls f on the current slot of each nested record and on each element of
// each repeated record: what SetValidate and SetLogger push down to.
template <class F>
void Record::forEachChild(const detail::RecordDescriptor &desc, F f) const
{
    RecordData *data = block();
    if (!data)
        return;
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        if (m.kind == Kind::Record) {
            f(*static_cast<const Record *>(data->slot(i, Slot::Current)));
        } else if (m.kind == Kind::RecordVector) {
            const void *vector = data->slot(i, Slot::Current);
            for (int k = 0, n = m.vector->size(vector); k < n; ++k)
                f(m.vector->at(vector, k));
        }
    }
}

void Record::SetValidate(bool validate) const
{
    IOrbelinObject::SetValidate(validate);
    forEachChild(descriptor(), [validate](const Record &child) { child.SetValidate(validate); });
}

void Record::SetLogger(std::shared_ptr<ORBELIN::Logger> logger) const
{
    IOrbelinObject::SetLogger(logger);
    forEachChild(descriptor(), [&logger](const Record &child) { child.SetLogger(logger); });
}

const QString &Record::GetVersion() const
{
    if (!descriptor().isVersioned())
        return IOrbelinObject::GetVersion();
    return data()->version;
}

const QString &Record::initialVersionLoaded() const
{
    return data()->initialVersionLoaded;
}

// --- members -----------------------------------------------------------------

bool Record::isSet(int member) const
{
    RecordData *data = block();
    return data && data->present.testBit(member);
}

void Record::markSet(int member)
{
    RecordData *data = this->data();
    data->present.setBit(member);
    const MemberInfo &m = descriptor().members[member];
    if (m.use == Use::Choice)
        data->currentChoice = m.choiceValue;
}

void Record::markDefault(int member)
{
    data()->defaults.setBit(member);
}

void Record::resetMember(int member)
{
    RecordData *data = block();
    if (!data)
        return;
    data->present.clearBit(member);
    resetSlot(member);
}

QString Record::pleaseSet(int member) const
{
    return GetObjectName()
        + QStringLiteral(": Please set %1 properly.").arg(descriptor().members[member].xmlName);
}

ORBELIN::IncompleteDefinitionException Record::incompleteChild(int member) const
{
    return ORBELIN::IncompleteDefinitionException(
        QStringLiteral("Parameters for %1 are not set properly in '%2'.")
            .arg(descriptor().members[member].stem, GetObjectName()));
}

bool Record::isValidNumber(int member, double value) const
{
    const MemberInfo &m = descriptor().members[member];
    // A closed range; NaN fails both comparisons.
    return !m.ranged || (m.low <= value && m.high >= value);
}

bool Record::isValidEnum(int member, int value) const
{
    data();
    return value >= 0 && value < descriptor().members[member].enumNames->size();
}

bool Record::isValidSlot(int member, Slot which) const
{
    void *value = data()->slot(member, which);
    switch (descriptor().members[member].kind) {
    case Kind::Double:
        return isValidNumber(member, *static_cast<double *>(value));
    case Kind::String:
        return isValidString(*static_cast<QString *>(value));
    case Kind::Enum:
        return isValidEnum(member, *static_cast<int *>(value));
    default:
        return true;
    }
}

void Record::setDouble(int member, double value)
{
    RecordData *data = this->data();
    if (GetValidate() && !isValidNumber(member, value)) {
        const MemberInfo &m = descriptor().members[member];
        throw ORBELIN::OutOfRangeException(
            QStringLiteral("Parameters for %1 are not set within range (%2, %3) in '%4'.")
                .arg(m.fieldName, QString::number(m.low), QString::number(m.high), GetObjectName()));
    }
    *static_cast<double *>(data->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setInt(int member, int value)
{
    *static_cast<int *>(data()->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setUInt(int member, unsigned int value)
{
    *static_cast<unsigned *>(data()->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setBool(int member, bool value)
{
    *static_cast<bool *>(data()->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setString(int member, const QString &value)
{
    RecordData *data = this->data();
    if (GetValidate() && value.isNull())
        throw ORBELIN::OutOfRangeException(pleaseSet(member));
    *static_cast<QString *>(data->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setDateTime(int member, const QDateTime &value)
{
    *static_cast<QDateTime *>(data()->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setEnum(int member, int value)
{
    RecordData *data = this->data();
    if (GetValidate() && !isValidEnum(member, value)) {
        throw ORBELIN::OutOfRangeException(
            QStringLiteral("enum is not valid (classname=%1,membername=%2)")
                .arg(descriptor().className, descriptor().members[member].fieldName));
    }
    *static_cast<int *>(data->slot(member, Slot::Current)) = value;
    markSet(member);
}

void Record::setRecord(int member, const Record &value)
{
    static_cast<Record *>(data()->slot(member, Slot::Current))->assign(value);
    markSet(member);
}

void Record::setDefaultRecord(int member, const Record &value)
{
    RecordData *data = this->data();
    static_cast<Record *>(data->slot(member, Slot::Default))->assign(value);
    data->defaults.setBit(member);
}

void Record::setFromSlot(int member, Slot which)
{
    void *value = data()->slot(member, which);
    switch (descriptor().members[member].kind) {
    case Kind::Double: setDouble(member, *static_cast<double *>(value)); break;
    case Kind::Int: setInt(member, *static_cast<int *>(value)); break;
    case Kind::UInt: setUInt(member, *static_cast<unsigned *>(value)); break;
    case Kind::Bool: setBool(member, *static_cast<bool *>(value)); break;
    case Kind::String: setString(member, *static_cast<QString *>(value)); break;
    case Kind::DateTime: setDateTime(member, *static_cast<QDateTime *>(value)); break;
    case Kind::Enum: setEnum(member, *static_cast<int *>(value)); break;
    case Kind::Record: setRecord(member, *static_cast<Record *>(value)); break;
    default: break;
    }
}

void Record::appendRecord(int member, const Record &item)
{
    RecordData *data = this->data();
    const MemberInfo &m = descriptor().members[member];
    if (GetValidate() && !item.HasData()) {
        throw ORBELIN::IncompleteDefinitionException(
            GetObjectName()
            + QStringLiteral(": Tried to append not completely defined or invalid item %1.").arg(m.itemType));
    }
    m.vector->append(data->slot(member, Slot::Current), item);
    data->present.setBit(member);
}

void Record::appendString(int member, const QString &item)
{
    static_cast<QVector<QString> *>(data()->slot(member, Slot::Current))->append(item);
    markSet(member);
}

void Record::appendDouble(int member, double item)
{
    static_cast<QVector<double> *>(data()->slot(member, Slot::Current))->append(item);
    markSet(member);
}

// --- enumerations and choice -----------------------------------------------------

QString Record::enumToName(int member, int value) const
{
    data();
    const QStringList &names = *descriptor().members[member].enumNames;
    return value >= 0 && value < names.size() ? names.at(value) : QString();
}

int Record::nameToEnum(int member, const QString &name) const
{
    const int index = descriptor().members[member].enumNames->indexOf(name);
    if (index >= 0)
        return index;
    return *static_cast<int *>(data()->slot(member, Slot::Invalid));
}

QString Record::enumAsString(int member) const
{
    return enumToName(member, *static_cast<int *>(data()->slot(member, Slot::Current)));
}

const int &Record::invalidEnum(int member) const
{
    return *static_cast<int *>(data()->slot(member, Slot::Invalid));
}

void Record::setInvalidEnum(int member, int value)
{
    *static_cast<int *>(data()->slot(member, Slot::Invalid)) = value;
}

const int &Record::currentChoice() const
{
    return data()->currentChoice;
}

void Record::resetChoice()
{
    RecordData *data = this->data();
    data->currentChoice = data->invalidChoice;
}

int Record::branchMember(int choice) const
{
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].use == Use::Choice && desc.members[i].choiceValue == choice)
            return i;
    }
    return -1;
}

void Record::initChoice(int value)
{
    Reset();
    RecordData *data = this->data();
    if (value == data->invalidChoice)
        throw ORBELIN::OutOfRangeException(QStringLiteral("Invalid enum value set in '%1'.").arg(GetObjectName()));
    const int member = branchMember(value);
    if (member >= 0)
        setFromSlot(member, Slot::Default);
}

QString Record::choiceToName(int value) const
{
    if (value == data()->invalidChoice)
        return QString();
    return descriptor().choiceNames->value(value);
}

int Record::nameToChoice(const QString &name) const
{
    const int index = descriptor().choiceNames->indexOf(name);
    return index >= 0 ? index : data()->invalidChoice;
}

bool Record::isValidChoice(int value) const
{
    data();
    return value >= 0 && value < descriptor().choiceNames->size();
}

const int &Record::invalidChoice() const
{
    return data()->invalidChoice;
}

void Record::setInvalidChoice(int value)
{
    data()->invalidChoice = value;
}

QStringList Record::translated(const char *context, const char *const *names, int count)
{
    QStringList list;
    list.reserve(count);
    for (int i = 0; i < count; ++i)
        list.append(QCoreApplication::translate(context, names[i]));
    return list;
}

// --- completeness, Check and equality ---------------------------------------------

bool Record::filled(int member, bool forHasData) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    void *current = data->slot(member, Slot::Current);
    switch (m.kind) {
    case Kind::String:
        return !static_cast<QString *>(current)->isNull();
    case Kind::Record: {
        const Record *child = static_cast<Record *>(current);
        return forHasData ? child->HasData() : child->AnyData();
    }
    case Kind::RecordVector:
        return m.vector->size(current) > 0;
    case Kind::StringVector:
        return !static_cast<QVector<QString> *>(current)->isEmpty();
    case Kind::DoubleVector:
        return !static_cast<QVector<double> *>(current)->isEmpty();
    default:
        return data->present.testBit(member);
    }
}

bool Record::HasData() const
{
    const detail::RecordDescriptor &desc = descriptor();
    if (desc.flags & detail::HasDataAlways)
        return true;
    RecordData *data = block();
    if (!data)
        return false;
    if (desc.choiceNames) {
        if (data->currentChoice == data->invalidChoice)
            return false;
        const int branch = branchMember(data->currentChoice);
        if (branch < 0 || !filled(branch, true))
            return false;
    }
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].use == Use::Mandatory && !filled(i, true))
            return false;
    }
    return true;
}

bool Record::AnyData() const
{
    if (!block())
        return false;
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        if (filled(i, false))
            return true;
    }
    return false;
}

void Record::Check() const
{
    Check(false);
}

void Record::Check(bool b) const
{
    SetValidate(GetValidate());
    SetLogger(GetLogger());
    initData();
    const detail::RecordDescriptor &desc = descriptor();
    if (desc.checkOrder) {
        for (int k = 0; k < desc.checkCount; ++k) {
            if (desc.checkOrder[k] < 0)
                checkChoice(b);
            else
                checkMember(desc.checkOrder[k], b);
        }
        return;
    }
    if (desc.choiceNames)
        checkChoice(b);
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].use != Use::Choice)
            checkMember(i, b);
    }
}

void Record::checkChoice(bool b) const
{
    RecordData *data = d.get();
    const int member = branchMember(data->currentChoice);
    if (member < 0)
        return;
    const MemberInfo &m = descriptor().members[member];
    const bool present = data->present.testBit(member);
    if (GetValidate() && (!present || !filled(member, true))) {
        const QString text = !m.choiceMessage.isEmpty()
            ? m.choiceMessage
            : QStringLiteral(":Check failed. The mandatory member %1 is not set or mandatory data of the member is not set.")
                  .arg(m.fieldName);
        throw ORBELIN::IncompleteDefinitionException(GetObjectName() + text);
    }
    if (present && m.kind == Kind::Record)
        static_cast<const Record *>(data->slot(member, Slot::Current))->Check(b);
}

void Record::checkMember(int member, bool b) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    const bool present = data->present.testBit(member);
    void *current = data->slot(member, Slot::Current);
    switch (m.kind) {
    case Kind::Reserved:
        return;
    case Kind::Record: {
        // With validation on, a mandatory child must be complete, as the
        // branch of a choice must: the record's HasData asks for it, so
        // without this test a record missing it would be dropped from the
        // output without a word instead of failing.
        const Record *child = static_cast<const Record *>(current);
        if (m.use == Use::Mandatory && GetValidate() && !child->HasData()) {
            throw incompleteChild(member);
        }
        if (present)
            child->Check(b);
        return;
    }
    case Kind::RecordVector:
        if (m.use == Use::Mandatory && !present)
            throw ORBELIN::OutOfRangeException(pleaseSet(member));
        if (present) {
            for (int k = 0, n = m.vector->size(current); k < n; ++k)
                m.vector->at(current, k).Check(b);
        }
        return;
    case Kind::StringVector:
        if (m.use == Use::Mandatory && !present)
            throw ORBELIN::OutOfRangeException(pleaseSet(member));
        for (const QString &item : *static_cast<QVector<QString> *>(current)) {
            if (item.isNull())
                throw ORBELIN::OutOfRangeException(pleaseSet(member));
        }
        return;
    case Kind::DoubleVector:
        if (m.use == Use::Mandatory && !present)
            throw ORBELIN::OutOfRangeException(pleaseSet(member));
        return;
    default:
        break;
    }
    const bool valid = isValidSlot(member, Slot::Current);
    if (m.use == Use::Mandatory ? (!present || !valid) : (present && !valid))
        throw ORBELIN::OutOfRangeException(pleaseSet(member));
}

bool Record::equals(const Record &other) const
{
    RecordData *a = block();
    RecordData *b = other.block();
    if (!a && !b)
        return true;
    const detail::RecordDescriptor &desc = descriptor();
    if (desc.isVersioned() && GetVersion() != other.GetVersion())
        return false;
    a = block();
    b = other.block();
    // Plain and nested members first, repeated ones after them.
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        if (isVector(m.kind))
            continue;
        const bool setA = a && a->present.testBit(i);
        const bool setB = b && b->present.testBit(i);
        if (!setA && !setB)
            continue;
        if (setA != setB)
            return false;
        const void *x = a->slot(i, Slot::Current);
        const void *y = b->slot(i, Slot::Current);
        bool same = true;
        switch (m.kind) {
        case Kind::Double: same = *static_cast<const double *>(x) == *static_cast<const double *>(y); break;
        case Kind::Int:
        case Kind::Enum: same = *static_cast<const int *>(x) == *static_cast<const int *>(y); break;
        case Kind::UInt: same = *static_cast<const unsigned *>(x) == *static_cast<const unsigned *>(y); break;
        case Kind::Bool: same = *static_cast<const bool *>(x) == *static_cast<const bool *>(y); break;
        case Kind::String: same = *static_cast<const QString *>(x) == *static_cast<const QString *>(y); break;
        case Kind::DateTime: same = *static_cast<const QDateTime *>(x) == *static_cast<const QDateTime *>(y); break;
        case Kind::Record:
            same = static_cast<const Record *>(x)->equals(*static_cast<const Record *>(y));
            break;
        default: break;
        }
        if (!same)
            return false;
    }
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        if (!isVector(m.kind))
            continue;
        const void *x = a ? a->slot(i, Slot::Current) : nullptr;
        const void *y = b ? b->slot(i, Slot::Current) : nullptr;
        if (m.kind == Kind::RecordVector) {
            const int n = x ? m.vector->size(x) : 0;
            if (n != (y ? m.vector->size(y) : 0))
                return false;
            for (int k = 0; k < n; ++k) {
                if (!m.vector->at(x, k).equals(m.vector->at(y, k)))
                    return false;
            }
        } else if (m.kind == Kind::StringVector) {
            static const QVector<QString> none;
            if ((x ? *static_cast<const QVector<QString> *>(x) : none)
                != (y ? *static_cast<const QVector<QString> *>(y) : none))
                return false;
        } else {
            static const QVector<double> none;
            if ((x ? *static_cast<const QVector<double> *>(x) : none)
                != (y ? *static_cast<const QVector<double> *>(y) : none))
                return false;
        }
    }
    return true;
}

// --- text forms ------------------------------------------------------------------------

QString Record::textOf(int member, Slot which) const
{
    const MemberInfo &m = descriptor().members[member];
    const void *value = data()->slot(member, which);
    switch (m.kind) {
    case Kind::Double:
        return doubleText(*static_cast<const double *>(value), m);
    case Kind::Int:
        return QStringLiteral("%1").arg(*static_cast<const int *>(value), m.width, 10, QLatin1Char(' '));
    case Kind::UInt:
        return QStringLiteral("%1").arg(*static_cast<const unsigned *>(value), m.width, 10, QLatin1Char(' '));
    case Kind::Bool:
        return *static_cast<const bool *>(value) ? QStringLiteral("true") : QStringLiteral("false");
    case Kind::String:
        return *static_cast<const QString *>(value);
    case Kind::DateTime:
        return ORBELIN::Converters::ToString(*static_cast<const QDateTime *>(value));
    case Kind::Enum:
        return enumToName(member, *static_cast<const int *>(value));
    default:
        return QString();
    }
}

void Record::setFromText(int member, const QString &text)
{
    const MemberInfo &m = descriptor().members[member];
    switch (m.kind) {
    case Kind::Double: setDouble(member, text.toDouble()); break;
    case Kind::Int: setInt(member, text.toInt()); break;
    case Kind::UInt: setUInt(member, unsigned(text.toInt())); break;
    case Kind::String: setString(member, stringValue(text)); break;
    case Kind::DateTime: setDateTime(member, ORBELIN::Converters::ToDateTime(text)); break;
    case Kind::Enum: setEnum(member, nameToEnum(member, text)); break;
    case Kind::Bool: {
        const QString lowered = text.toLower();
        if (lowered.isEmpty()) {
            if (m.flags & detail::EmptyBoolThrows) {
                throw ORBELIN::InvalidXmlException(
                    QStringLiteral("Please set a value or a default for the boolean '%1' in '%2'.")
                        .arg(m.xmlName, GetObjectName()));
            }
            setBool(member, *static_cast<bool *>(data()->slot(member, Slot::Default)));
        } else {
            setBool(member, lowered != QLatin1String("0") && lowered != QLatin1String("false"));
        }
        break;
    }
    case Kind::StringVector: appendString(member, stringValue(text)); break;
    case Kind::DoubleVector: appendDouble(member, text.toDouble()); break;
    default: break;
    }
}

// Attributes and the character data of the text-value records are stored
// past the setter's tests: the setter runs with this record's flag off (the
// children's flags are not touched).
void Record::storeAttribute(int member, const QString &text)
{
    const bool validate = GetValidate();
    IOrbelinObject::SetValidate(false);
    try {
        setFromText(member, text);
    } catch (...) {
        IOrbelinObject::SetValidate(validate);
        throw;
    }
    IOrbelinObject::SetValidate(validate);
}

// --- XML -----------------------------------------------------------------------------------

// Attributes first, then the character data, then elements and children, each
// group in table order. The binary form follows the same order.
template <class F>
void Record::forEachInWriteOrder(F f) const
{
    const detail::RecordDescriptor &desc = descriptor();
    for (Xml group : {Xml::Attribute, Xml::Text}) {
        for (int i = 0; i < desc.memberCount; ++i) {
            if (desc.members[i].xml == group)
                f(i);
        }
    }
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].xml != Xml::Attribute && desc.members[i].xml != Xml::Text)
            f(i);
    }
}

void Record::GetXml(QXmlStreamWriter &writer) const
{
    SetValidate(GetValidate());
    SetLogger(GetLogger());
    if (GetValidate()) {
        Check();
        if (!HasData())
            return;
    }
    RecordData *data = this->data();
    writer.writeStartElement(GetObjectName());
    if (descriptor().isVersioned())
        writer.writeAttribute(versionAttribute(), data->version);
    forEachInWriteOrder([&](int i) { writeXmlMember(writer, i); });
    writer.writeEndElement();
}

void Record::writeXmlMember(QXmlStreamWriter &writer, int member) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    const bool present = data->present.testBit(member);
    void *current = data->slot(member, Slot::Current);
    if (m.use == Use::Choice) {
        if (m.choiceValue != data->currentChoice)
            return;
        if (m.kind == Kind::Record) {
            if (present)
                static_cast<const Record *>(current)->GetXml(writer);
        } else {
            writer.writeTextElement(m.xmlName, textOf(member));
        }
        return;
    }
    switch (m.kind) {
    case Kind::Record: {
        const Record *child = static_cast<const Record *>(current);
        if (m.use == Use::Mandatory) {
            if (GetValidate() && !child->HasData()) {
                throw incompleteChild(member);
            }
            child->GetXml(writer);
        } else if (present) {
            child->GetXml(writer);
        }
        return;
    }
    case Kind::RecordVector:
        for (int k = 0, n = m.vector->size(current); k < n; ++k) {
            const Record &item = m.vector->at(current, k);
            if (GetValidate() && !item.HasData()) {
                throw incompleteChild(member);
            }
            if (present)
                item.GetXml(writer);
        }
        return;
    case Kind::StringVector:
        if (present) {
            for (const QString &item : *static_cast<const QVector<QString> *>(current))
                writer.writeTextElement(m.xmlName, item);
        }
        return;
    case Kind::DoubleVector:
        if (present) {
            for (double item : *static_cast<const QVector<double> *>(current))
                writer.writeTextElement(m.xmlName, doubleText(item, m));
        }
        return;
    default:
        break;
    }
    if (m.use != Use::Mandatory && !present)
        return;
    switch (m.xml) {
    case Xml::Attribute: writer.writeAttribute(m.xmlName, textOf(member)); break;
    case Xml::Text: writer.writeCharacters(textOf(member)); break;
    default: writer.writeTextElement(m.xmlName, textOf(member)); break;
    }
}

void Record::readAttributes(const QXmlStreamAttributes &attributes)
{
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        if (m.xml == Xml::Attribute && attributes.hasAttribute(m.xmlName))
            storeAttribute(i, attributes.value(m.xmlName).toString());
    }
}

void Record::ProcessXml(QXmlStreamReader &reader)
{
    const detail::RecordDescriptor &desc = descriptor();
    if (desc.flags & detail::TextValue) {
        ReadValuesFromXml(reader);
        return;
    }
    RecordData *data = this->data();
    const QXmlStreamAttributes attributes = reader.attributes();
    if (desc.isVersioned()) {
        data->initialVersionLoaded = stringValue(attributes.value(versionAttribute()).toString());
        // A document older than the schema starts from the defaults.
        if (data->version.toFloat() > data->initialVersionLoaded.toFloat())
            ResetToDefault();
    }
    readAttributes(attributes);
    IOrbelinObject::ProcessXml(reader);
}

void Record::ReadValuesFromXml(QXmlStreamReader &reader)
{
    const QString name = Compat::elementName(reader);
    data();
    readAttributes(reader.attributes());
    const detail::RecordDescriptor &desc = descriptor();
    const QString text = GetTextValue(reader);
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].xml == Xml::Text)
            storeAttribute(i, text);
    }
    while (!reader.atEnd() && Compat::elementName(reader) != name)
        reader.readNext();
}

void Record::ProcessXmlStartElement(QXmlStreamReader &reader)
{
    SetValidate(GetValidate());
    SetLogger(GetLogger());
    const QString name = Compat::elementName(reader);
    RecordData *data = this->data();
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        switch (m.kind) {
        case Kind::Record: {
            Record *child = static_cast<Record *>(data->slot(i, Slot::Current));
            if (name != child->GetObjectName())
                continue;
            // Reading a branch selects it.
            markSet(i);
            child->ProcessXml(reader);
            markSet(i);
            return;
        }
        case Kind::RecordVector: {
            Record *scratch = static_cast<Record *>(data->slot(i, Slot::Scratch));
            if (name != scratch->GetObjectName())
                continue;
            scratch->Reset();
            scratch->SetValidate(GetValidate());
            scratch->SetLogger(GetLogger());
            scratch->ProcessXml(reader);
            appendRecord(i, *scratch);
            return;
        }
        default:
            if (name != m.xmlName || (m.xml != Xml::Element && !(m.flags & detail::AlsoElement)))
                continue;
            setFromText(i, GetTextValue(reader));
            return;
        }
    }
    if (desc.isVersioned() && data->initialVersionLoaded.toFloat() >= data->version.toFloat()) {
        if (GetValidate()) {
            throw ORBELIN::InvalidXmlException(
                QStringLiteral("Unknown Tag '%1' in '%2'.").arg(name, GetObjectName()));
        }
        // Left unread: the element loop offers its children to this record.
        return;
    }
    // Skipped up to the next token of the same name.
    while (!reader.atEnd()) {
        reader.readNext();
        if (Compat::elementName(reader) == name)
            break;
    }
}

// --- binary ------------------------------------------------------------------------------

bool Record::GetBinary(QDataStream &stream, int id, bool writeId) const
{
    SetValidate(GetValidate());
    SetLogger(GetLogger());
    if (GetValidate()) {
        Check();
        if (!HasData())
            return false;
    }
    RecordData *data = this->data();
    if (writeId)
        stream << qint32(id);
    writeWithLength(stream, [&] {
        if (descriptor().isVersioned())
            writeFrame(stream, VersionTag, [&] { stream << data->version; });
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
    SetValidate(GetValidate());
    SetLogger(GetLogger());
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
            if (data->version.toFloat() > data->initialVersionLoaded.toFloat())
                ResetToDefault();
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
            appendRecord(member, *item);
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
    default: {
        QByteArray text;
        stream >> text;
        setFromText(member, QString::fromUtf8(text));
        return;
    }
    }
}

} // namespace Morvane
