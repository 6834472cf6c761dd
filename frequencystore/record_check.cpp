#include "frequencystore/record_p.h"

#include "frame/exceptions.h"

namespace Morvane {

using namespace runtime;

// --- completeness, Check and equality ---------------------------------------------

bool Record::filled(int member, bool forHasData) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    if (m.kind == Kind::Record) {
        // A nested record never made has no data; whether it counts for
        // HasData is its own record's business, so it is asked then.
        const void *made = data->slot(member, forHasData ? Slot::Current : Slot::MadeCurrent);
        const Record *child = static_cast<const Record *>(made);
        return child && (forHasData ? child->HasData() : child->AnyData());
    }
    void *current = data->slot(member, Slot::Current);
    switch (m.kind) {
    case Kind::String:
        return !static_cast<QString *>(current)->isNull();
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
    PushScope scope(*this);
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
    if (m.kind == Kind::Reserved)
        return;
    if (m.kind == Kind::Record) {
        // With validation on, a mandatory child must be complete, as the
        // branch of a choice must: the record's HasData asks for it, so
        // without this test a record missing it would be dropped from the
        // output without a word instead of failing.
        // (A member written only when set is tested when the record is
        // written: readyToWrite.) A child neither tested nor present is not
        // looked at, and need not be made.
        const bool tested = alwaysWritten(m) && GetValidate();
        if (!tested && !present)
            return;
        const Record *child = static_cast<const Record *>(data->slot(member, Slot::Current));
        if (tested && !child->HasData())
            throw incompleteChild(member);
        if (present)
            child->Check(b);
        return;
    }
    void *current = data->slot(member, Slot::Current);
    switch (m.kind) {
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

// What both writers do first. With validation off, everything is written.
// With it on: Check; then the nested records that are written only when set
// must be complete; then a record whose HasData is false is not written.
bool Record::readyToWrite() const
{
    if (!GetValidate())
        return true;
    Check();
    const detail::RecordDescriptor &desc = descriptor();
    for (int i = 0; i < desc.memberCount; ++i) {
        if ((desc.members[i].flags & detail::WrittenWhenSet)
            && !static_cast<const Record *>(d.get()->slot(i, Slot::Current))->HasData())
            throw incompleteChild(i);
    }
    return HasData();
}

} // namespace Morvane
