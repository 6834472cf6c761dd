#include "frequencystore/record_p.h"

#include "frame/converters.h"
#include "frame/exceptions.h"

#include <QtCore/QCoreApplication>

namespace Morvane {

using namespace runtime;

namespace {
// Calls under way whose push covers the records they reach; per thread, as a
// record tree belongs to one thread at a time.
thread_local int t_pushScopes = 0;
} // namespace

PushScope::PushScope(const Record &record, bool again)
{
    if (t_pushScopes == 0 || again)
        record.pushDown();
    ++t_pushScopes;
}

PushScope::~PushScope()
{
    --t_pushScopes;
}

// --- block -------------------------------------------------------------------

namespace detail {

RecordData::RecordData(const RecordData &other)
    : ref(0), childValidate(other.childValidate),
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
    SetStaticObjectName(&descriptor.objectName);
    m_id = descriptor.id;
}

Record::Record(const detail::RecordDescriptor &descriptor, const Record &other)
    : IOrbelinObject(other.GetObjectType()), d(other.d)
{
    SetStaticObjectName(&descriptor.objectName);
    m_id = descriptor.id;
    // The record's own SetValidate, on the descriptor given: this object's
    // virtual descriptor() is not there yet while it is being built.
    const bool validate = other.GetValidate();
    IOrbelinObject::SetValidate(validate);
    forEachChild(descriptor, [validate](const Record &child) { child.SetValidate(validate); });
    d.detach();
    handedDown(validate);
}

Record::Record(Record &&other) noexcept : IOrbelinObject(std::move(other)), d(std::move(other.d)) {}

Record::~Record() = default;

void Record::assign(const Record &other)
{
    if (this == &other || d.get() == other.d.get())
        return;
    d = other.d;
}

void Record::assign(Record &&other) noexcept
{
    if (this != &other)
        d = std::move(other.d);
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
    d = detail::DataPtr(descriptor().create());
    // ConstNoClearReset has nothing to do on a new block: the generated block
    // starts every current slot at its reset value (the built-in default, the
    // null string, an empty vector, a fresh record) and the choice at the
    // invalid one. Every record of a new block validates and has no logger,
    // so the push has something to hand down only when this record differs.
    if (!GetValidate() || GetLogger())
        pushDown();
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
    // A nested record's default slot is not made for this: one never made
    // resets the current slot to a fresh record, which a current slot never
    // made holds already.
    const bool record = m.kind == Kind::Record || m.kind == Kind::RecordVector;
    const void *initial = data->slot(member, record ? Slot::MadeDefault : Slot::Default);
    void *current = data->slot(member, m.kind == Kind::Record && !initial ? Slot::MadeCurrent : Slot::Current);
    if (!current)
        return;
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
        if (initial)
            static_cast<Record *>(current)->assign(*static_cast<const Record *>(initial));
        else
            static_cast<Record *>(current)->d = detail::DataPtr();
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
    data->present.clear();
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

// Calls f on the current slot of each nested record made so far and on each
// element of each repeated record: what SetValidate and SetLogger push down
// to. (A nested record made later takes what was pushed from its block.)
template <class F>
void Record::forEachChild(const detail::RecordDescriptor &desc, F f) const
{
    RecordData *data = block();
    if (!data)
        return;
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        if (m.kind == Kind::Record) {
            if (const void *child = data->slot(i, Slot::MadeCurrent))
                f(*static_cast<const Record *>(child));
        } else if (m.kind == Kind::RecordVector) {
            void *vector = data->slot(i, Slot::Current);
            // A vector copied with its block still shares its items with the
            // other block's vector: what is handed to the items must not
            // reach that one.
            m.vector->detach(vector);
            for (int k = 0, n = m.vector->size(vector); k < n; ++k)
                f(m.vector->at(vector, k));
        }
    }
}

void Record::pushDown() const
{
    const bool validate = GetValidate();
    const std::shared_ptr<ORBELIN::Logger> logger = GetLogger();
    struct Walk
    {
        bool validate;
        const std::shared_ptr<ORBELIN::Logger> &logger;
        void operator()(const Record &child) const
        {
            child.IOrbelinObject::SetValidate(validate);
            child.IOrbelinObject::SetLogger(logger);
            child.forEachChild(child.descriptor(), *this);
            child.handedDown(validate);
            child.handedDown(logger);
        }
    };
    forEachChild(descriptor(), Walk{validate, logger});
    handedDown(validate);
    handedDown(logger);
}

void Record::handedDown(bool validate) const
{
    if (RecordData *data = d.get())
        data->childValidate = validate;
}

void Record::handedDown(const std::shared_ptr<ORBELIN::Logger> &logger) const
{
    if (RecordData *data = d.get())
        data->childLogger = logger;
}

void Record::SetValidate(bool validate) const
{
    IOrbelinObject::SetValidate(validate);
    forEachChild(descriptor(), [validate](const Record &child) { child.SetValidate(validate); });
    handedDown(validate);
}

void Record::SetLogger(std::shared_ptr<ORBELIN::Logger> logger) const
{
    IOrbelinObject::SetLogger(logger);
    forEachChild(descriptor(), [&logger](const Record &child) { child.SetLogger(logger); });
    handedDown(logger);
}

const QString &Record::GetVersion() const
{
    if (!descriptor().isVersioned())
        return IOrbelinObject::GetVersion();
    data(); // as every accessor of the block, it makes one
    return descriptor().version;
}

const QString &Record::initialVersionLoaded() const
{
    return *data()->loadedVersion();
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
    const auto value = [&] { return data()->slot(member, which); };
    switch (descriptor().members[member].kind) {
    case Kind::Double:
        return isValidNumber(member, *static_cast<double *>(value()));
    case Kind::String:
        return isValidString(*static_cast<QString *>(value()));
    case Kind::Enum:
        return isValidEnum(member, *static_cast<int *>(value()));
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

ORBELIN::IncompleteDefinitionException Record::incompleteItem(const MemberInfo &m) const
{
    return ORBELIN::IncompleteDefinitionException(
        GetObjectName() + QStringLiteral(": Tried to append not completely defined or invalid item %1.").arg(m.itemType));
}

void Record::appendRecord(int member, const Record &item)
{
    RecordData *data = this->data();
    const MemberInfo &m = descriptor().members[member];
    if (GetValidate() && !item.HasData())
        throw incompleteItem(m);
    m.vector->append(data->slot(member, Slot::Current), item);
    data->present.setBit(member);
}

void Record::appendMoved(int member, Record &item)
{
    RecordData *data = this->data();
    const MemberInfo &m = descriptor().members[member];
    if (GetValidate() && !item.HasData())
        throw incompleteItem(m);
    m.vector->appendMove(data->slot(member, Slot::Current), item);
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
    case Kind::Double: setDouble(member, ORBELIN::Converters::ToDouble(text)); break;
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
    case Kind::DoubleVector: appendDouble(member, ORBELIN::Converters::ToDouble(text)); break;
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

} // namespace Morvane
