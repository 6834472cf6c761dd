#include "frequencystore/record_p.h"

#include "frame/exceptions.h"
#include "frame/qtcompat.h"

#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace Morvane {

using namespace runtime;

// --- XML -----------------------------------------------------------------------------------

void Record::GetXml(QXmlStreamWriter &writer) const
{
    PushScope scope(*this);
    if (!readyToWrite())
        return;
    initData();
    writer.writeStartElement(GetObjectName());
    if (descriptor().isVersioned())
        writer.writeAttribute(versionAttribute(), descriptor().version);
    forEachInWriteOrder([&](int i) { writeXmlMember(writer, i); });
    writer.writeEndElement();
}

void Record::writeXmlMember(QXmlStreamWriter &writer, int member) const
{
    RecordData *data = d.get();
    const MemberInfo &m = descriptor().members[member];
    const bool present = data->present.testBit(member);
    // A nested record is made only when it is written.
    const auto child = [&] { return static_cast<const Record *>(data->slot(member, Slot::Current)); };
    if (m.use == Use::Choice) {
        if (m.choiceValue != data->currentChoice)
            return;
        if (m.kind == Kind::Record) {
            if (present)
                child()->GetXml(writer);
        } else {
            writer.writeTextElement(m.xmlName, textOf(member));
        }
        return;
    }
    if (m.kind == Kind::Record) {
        if (alwaysWritten(m)) {
            if (GetValidate() && !child()->HasData())
                throw incompleteChild(member);
            child()->GetXml(writer);
        } else if (present) {
            child()->GetXml(writer);
        }
        return;
    }
    void *current = data->slot(member, Slot::Current);
    switch (m.kind) {
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
    bool startedFromDefaults = false;
    if (desc.isVersioned()) {
        // The usual version text is the schema's own: shared, not made anew.
        const auto loaded = attributes.value(versionAttribute());
        *data->loadedVersion() = loaded == desc.version ? desc.version : stringValue(loaded.toString());
        // A document older than the schema starts from the defaults.
        if (olderDocument(*data, desc.version)) {
            ResetToDefault();
            startedFromDefaults = true;
        }
    }
    readAttributes(attributes);
    // One push for the whole element: the ProcessXmlStartElement of each
    // child runs inside this scope.
    PushScope scope(*this, startedFromDefaults);
    IOrbelinObject::ProcessXml(reader);
}

// The element's name as a QString; the object's own name needs no new one.
static QString currentName(const QXmlStreamReader &reader, const QString &objectName)
{
    return Compat::nameIs(reader, objectName) ? objectName : Compat::elementName(reader);
}

void Record::ReadValuesFromXml(QXmlStreamReader &reader)
{
    const QString name = currentName(reader, GetObjectName());
    data();
    readAttributes(reader.attributes());
    const detail::RecordDescriptor &desc = descriptor();
    const QString text = GetTextValue(reader);
    for (int i = 0; i < desc.memberCount; ++i) {
        if (desc.members[i].xml == Xml::Text)
            storeAttribute(i, text);
    }
    while (!reader.atEnd() && !Compat::nameIs(reader, name))
        reader.readNext();
}

void Record::ProcessXmlStartElement(QXmlStreamReader &reader)
{
    PushScope scope(*this);
    RecordData *data = this->data();
    const detail::RecordDescriptor &desc = descriptor();
    // The element name of a nested or repeated record is its class's object
    // name, which is what the member's XML name holds.
    for (int i = 0; i < desc.memberCount; ++i) {
        const MemberInfo &m = desc.members[i];
        if (m.kind == Kind::Reserved || !Compat::nameIs(reader, m.xmlName))
            continue;
        switch (m.kind) {
        case Kind::Record: {
            Record *child = static_cast<Record *>(data->slot(i, Slot::Current));
            // Reading a branch selects it.
            markSet(i);
            child->ProcessXml(reader);
            markSet(i);
            return;
        }
        case Kind::RecordVector: {
            // The item under way is read into a fresh record that holds this
            // record's flag and logger, and is then moved into the vector.
            std::unique_ptr<Record> item = m.vector->make();
            item->SetValidate(GetValidate());
            item->SetLogger(GetLogger());
            item->ProcessXml(reader);
            appendMoved(i, *item);
            return;
        }
        default:
            if (m.xml != Xml::Element && !(m.flags & detail::AlsoElement))
                continue;
            setFromText(i, GetTextValue(reader));
            return;
        }
    }
    const QString name = Compat::elementName(reader);
    if (desc.isVersioned() && currentOrNewerDocument(*data, desc.version)) {
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
        if (Compat::nameIs(reader, name))
            break;
    }
}

} // namespace Morvane
