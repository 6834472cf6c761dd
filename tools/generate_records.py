#!/usr/bin/env python3
"""Turns the record schema (schema/*.schema) into the record classes.

For every record it writes frequencystore/records/<name>.h with the typed
accessors, and for every schema file one records_<file>.cpp with the blocks,
the descriptors and the name lists. All behaviour lives in the runtime
(frequencystore/record.cpp); the generated code only describes and forwards.

    generate_records.py --out DIR schema/*.schema     writes the files
    generate_records.py --list schema/*.schema        prints what it would write

The format of the schema files is described in schema/README.md.
"""

import argparse
import os
import re
import shlex
import sys

PLAIN_TYPES = {"double", "int", "uint", "bool", "string", "datetime"}
CPP_TYPE = {
    "double": "double",
    "int": "int",
    "uint": "unsigned int",
    "bool": "bool",
    "string": "QString",
    "datetime": "QDateTime",
}
KIND = {
    "double": "Double",
    "int": "Int",
    "uint": "UInt",
    "bool": "Bool",
    "string": "String",
    "datetime": "DateTime",
    "enum": "Enum",
    "record": "Record",
    "record[]": "RecordVector",
    "string[]": "StringVector",
    "double[]": "DoubleVector",
    "reserved": "Reserved",
}
MEMBER_FLAGS = {"raw32": "detail::Raw32", "empty-bool-throws": "detail::EmptyBoolThrows",
                "also-element": "detail::AlsoElement", "written-when-set": "detail::WrittenWhenSet",
                "omitted-when-empty": "detail::OmittedWhenEmpty"}
RECORD_FLAGS = {"hasdata-always": "detail::HasDataAlways", "text-value": "detail::TextValue"}


class SchemaError(Exception):
    pass


class Enum:
    def __init__(self, name, names):
        self.name = name
        self.names = names


class Member:
    def __init__(self, record, stem):
        self.record = record
        self.stem = stem
        self.type = None        # a plain type, "enum", "record", "record[]", "string[]", "double[]"
        self.target = None      # the record type of record and record[] members
        self.enum = None        # the Enum of an enum member
        self.xml = "element"
        self.xml_name = stem
        self.tag = None
        self.use = "optional"
        self.choice_value = -1
        self.range = None
        self.decimals = 2
        self.width = 0
        self.default = None
        self.flags = []
        self.field = "m_" + stem[0].lower() + stem[1:]
        self.accessor = stem
        self.choice_message = None

    @property
    def kind(self):
        return KIND[self.type]


class Record:
    def __init__(self, name, source):
        self.name = name
        self.source = source
        self.element = name
        self.id = None
        self.version = None
        self.flags = []
        self.check = None
        self.members = []
        self.enums = {}

    @property
    def choice_members(self):
        return sorted((m for m in self.members if m.use == "choice"), key=lambda m: m.choice_value)

    @property
    def choice_enum(self):
        return "Choice" + self.name

    @property
    def needs_tr(self):
        return bool(self.enums) or bool(self.choice_members)


def parse_number(text, where):
    try:
        return float(text)
    except ValueError:
        raise SchemaError(f"{where}: '{text}' is no number")


def parse_files(paths):
    records = {}
    order = []
    for path in paths:
        source = os.path.splitext(os.path.basename(path))[0]
        record = None
        pending_enum = None
        with open(path, encoding="utf-8") as f:
            for number, raw in enumerate(f, 1):
                where = f"{path}:{number}"
                try:
                    words = shlex.split(raw, comments=True)
                except ValueError as error:
                    raise SchemaError(f"{where}: {error}")
                if not words:
                    continue
                indented = raw[0] in " \t"
                if not indented:
                    if words[0] != "record":
                        raise SchemaError(f"{where}: expected 'record'")
                    record = Record(words[1], source)
                    if record.name in records:
                        raise SchemaError(f"{where}: record {record.name} defined twice")
                    for option in words[2:]:
                        key, _, value = option.partition("=")
                        if key == "id":
                            record.id = int(value, 16)
                        elif key == "element":
                            record.element = value
                        elif key == "version":
                            record.version = value
                        elif key in RECORD_FLAGS:
                            record.flags.append(key)
                        else:
                            raise SchemaError(f"{where}: unknown record option '{option}'")
                    if record.id is None:
                        raise SchemaError(f"{where}: record {record.name} has no id")
                    records[record.name] = record
                    order.append(record)
                    pending_enum = None
                    continue
                if record is None:
                    raise SchemaError(f"{where}: member outside a record")
                if raw.lstrip().startswith('"'):
                    if pending_enum is None:
                        raise SchemaError(f"{where}: names outside an enum")
                    pending_enum.names.extend(words)
                    continue
                pending_enum = None
                if words[0] == "enum":
                    name = words[1].rstrip(":")
                    pending_enum = Enum(name, words[2:])
                    record.enums[name] = pending_enum
                    continue
                if words[0] == "check:":
                    record.check = words[1:]
                    continue
                record.members.append(parse_member(record, words, where))
    resolve(records, order)
    return order


def parse_member(record, words, where):
    if len(words) == 2 and words[1] == "reserved":
        m = Member(record, words[0])
        m.type = "reserved"
        m.tag = 0
        m.xml_name = ""
        return m
    if len(words) < 5:
        raise SchemaError(f"{where}: a member needs stem, type, xml, tag and use")
    m = Member(record, words[0])
    type_word, xml_word, tag_word, use_word = words[1:5]
    if type_word in PLAIN_TYPES:
        m.type = type_word
    elif type_word == "enum" or type_word.startswith("enum:"):
        m.type = "enum"
        m.enum = type_word.partition(":")[2] or m.stem
    elif type_word in ("string[]", "double[]"):
        m.type = type_word
    elif type_word.endswith("[]"):
        m.type = "record[]"
        m.target = type_word[:-2]
    else:
        m.type = "record"
        m.target = type_word
    xml, _, name = xml_word.partition("=")
    if xml not in ("element", "attribute", "text", "child"):
        raise SchemaError(f"{where}: unknown xml mapping '{xml_word}'")
    m.xml = xml
    if name:
        m.xml_name = name
    m.tag = int(tag_word, 16)
    use, _, value = use_word.partition("=")
    if use not in ("mandatory", "optional", "choice"):
        raise SchemaError(f"{where}: unknown use '{use_word}'")
    m.use = use
    if use == "choice":
        m.choice_value = int(value)
    for option in words[5:]:
        key, _, value = option.partition("=")
        if key == "range":
            low, _, high = value.partition("..")
            m.range = (parse_number(low, where), parse_number(high, where))
        elif key == "decimals":
            m.decimals = int(value)
        elif key == "width":
            m.width = int(value)
        elif key == "default":
            m.default = value
        elif key == "field":
            m.field = value
        elif key == "accessor":
            m.accessor = value
        elif key == "choice-message":
            m.choice_message = value
        elif key in MEMBER_FLAGS:
            m.flags.append(key)
        else:
            raise SchemaError(f"{where}: unknown member option '{option}'")
    return m


def resolve(records, order):
    for record in order:
        tags = {}
        for m in record.members:
            if m.type == "enum":
                if m.enum not in record.enums:
                    raise SchemaError(f"{record.name}.{m.stem}: no enum {m.enum}")
                m.enum = record.enums[m.enum]
            if m.target is not None:
                if m.target not in records:
                    raise SchemaError(f"{record.name}.{m.stem}: unknown record type {m.target}")
                m.target = records[m.target]
                if m.xml == "child":
                    m.xml_name = m.target.element
            if m.type == "reserved":
                continue
            if m.tag in tags:
                raise SchemaError(f"{record.name}: tag {m.tag:#x} of {m.stem} is also {tags[m.tag]}")
            tags[m.tag] = m.stem
        if record.check:
            stems = {m.stem for m in record.members}
            for word in record.check:
                if word != "choice" and word not in stems:
                    raise SchemaError(f"{record.name}: check names unknown member {word}")
            # A member left out of the order would never be checked.
            wanted = sorted([m.stem for m in record.members if m.use != "choice" and m.type != "reserved"]
                            + (["choice"] if record.choice_members else []))
            if sorted(record.check) != wanted:
                raise SchemaError(f"{record.name}: check must name every member once, and 'choice' for the choice group")
        if len(record.members) > 64:
            raise SchemaError(f"{record.name}: more than 64 members do not fit the presence bits")
        values = [m.choice_value for m in record.choice_members]
        if values and values != list(range(len(values))):
            raise SchemaError(f"{record.name}: choice values must run from 0 without a gap")


# --- writing ------------------------------------------------------------------

def cxx_string(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def qs(text):
    return "QString()" if text is None else f"QStringLiteral({cxx_string(text)})"


def identifier(enum_name, name):
    word = re.sub(r"[^0-9A-Za-z]+", "_", name).strip("_")
    return f"{enum_name}_{word}"


def signed32(value):
    return value - (1 << 32) if value & 0x80000000 else value


def header_name(record):
    return f"frequencystore/records/{record.name.lower()}.h"


def cpp_type(m):
    if m.type in PLAIN_TYPES:
        return CPP_TYPE[m.type]
    if m.type == "enum":
        return m.enum.name
    if m.type == "record":
        return m.target.name
    if m.type == "record[]":
        return f"QVector<{m.target.name}>"
    return "QVector<QString>" if m.type == "string[]" else "QVector<double>"


def item_type(m):
    if m.type == "record[]":
        return m.target.name
    return "QString" if m.type == "string[]" else "double"


def accessors(m, i):
    """The accessor family of one member, as inline forwarding functions."""
    s, a, t = m.stem, m.accessor, cpp_type(m)
    out = [f"    // {s}",
           f"    bool Is{s}Set() const {{ return isSet({i}); }}",
           f"    void Reset{s}() {{ resetMember({i}); }}"]
    if m.type in PLAIN_TYPES:
        out.append(f"    void SetDefault{s}(const {t} &value) {{ slot<{t}>({i}, detail::Slot::Default) = value; markDefault({i}); }}")
        out.append(f"    const {t} &GetDefault{s}() const {{ return slot<{t}>({i}, detail::Slot::Default); }}")
        valid = {"double": f"isValidNumber({i}, value)", "string": "isValidString(value)"}.get(m.type, "true")
        unused = "" if m.type in ("double", "string") else "value; "
        if m.type == "datetime":
            out.append(f"    bool IsValid{s}(const {t} &value) const {{ (void)value; return true; }}")
            out.append(f"    const {t} &Get{a}() const {{ return slot<{t}>({i}); }}")
            out.append(f"    {t} &Get{a}() {{ return mutableSlot<{t}>({i}); }}")
            out.append(f"    void Set{a}(const {t} &value) {{ setDateTime({i}, value); }}")
        else:
            param = "const QString &" if m.type == "string" else t + " "
            body = f"(void)value; return true;" if valid == "true" else f"return {valid};"
            out.append(f"    bool IsValid{s}({param}value) const {{ {body} }}")
            setter = {"double": "setDouble", "int": "setInt", "uint": "setUInt", "bool": "setBool",
                      "string": "setString"}[m.type]
            if m.type == "string":
                out.append(f"    QString Get{a}() const {{ return slot<QString>({i}); }}")
                out.append(f"    void Set{a}(QString value) {{ {setter}({i}, value); }}")
            else:
                out.append(f"    {t} Get{a}() const {{ return slot<{t}>({i}); }}")
                out.append(f"    void Set{a}({t} value) {{ {setter}({i}, value); }}")
    elif m.type == "enum":
        e = m.enum.name
        out += [
            f"    void SetDefault{s}(const {e} &value) {{ slot<int>({i}, detail::Slot::Default) = value; markDefault({i}); }}",
            f"    {e} GetDefault{s}() const {{ return {e}(slot<int>({i}, detail::Slot::Default)); }}",
            f"    bool IsValid{s}(const {e} &value) const {{ return isValidEnum({i}, value); }}",
            f"    {e} Get{a}() const {{ return {e}(slot<int>({i})); }}",
            f"    void Set{a}(const {e} &value) {{ setEnum({i}, value); }}",
            f"    QString {s}ToName(const {e} &value) const {{ return enumToName({i}, value); }}",
            f"    {e} NameTo{s}(const QString &name) const {{ return {e}(nameToEnum({i}, name)); }}",
            f"    QString Get{s}AsString() const {{ return enumAsString({i}); }}",
            f"    {e} GetInvalid{s}() const {{ return {e}(invalidEnum({i})); }}",
            f"    void SetInvalid{s}(const {e} &value) {{ setInvalidEnum({i}, value); }}",
        ]
    elif m.type == "record":
        out += [
            f"    void SetDefault{s}(const {t} &value) {{ setDefaultRecord({i}, value); }}",
            f"    const {t} &GetDefault{s}() const {{ return recordSlot<{t}>({i}, detail::Slot::Default); }}",
            f"    bool IsValid{s}(const {t} &value) const {{ (void)value; return true; }}",
            f"    const {t} &Get{a}() const {{ return recordSlot<{t}>({i}); }}",
            f"    {t} &Get{a}() {{ return mutableRecord<{t}>({i}); }}",
            f"    void Set{a}(const {t} &value) {{ setRecord({i}, value); }}",
        ]
    else:
        it = item_type(m)
        if m.type == "record[]":
            default_get = f"recordSlot<{it}>({i}, detail::Slot::Default)"
            default_set = f"recordSlot<{it}>({i}, detail::Slot::Default) = value; markDefault({i});"
            append = f"appendRecord({i}, value);"
            valid_item = "(void)value; return true;"
        else:
            default_get = f"slot<{it}>({i}, detail::Slot::Default)"
            default_set = f"slot<{it}>({i}, detail::Slot::Default) = value; markDefault({i});"
            append = f"append{'String' if m.type == 'string[]' else 'Double'}({i}, value);"
            valid_item = "return isValidString(value);" if m.type == "string[]" else "(void)value; return true;"
        out += [
            f"    void SetDefault{s}(const {it} &value) {{ {default_set} }}",
            f"    const {it} &GetDefault{s}() const {{ return {default_get}; }}",
            f"    bool IsValid{s}(const {it} &value) const {{ {valid_item} }}",
            f"    bool IsValid{s}(const {t} &value) const {{ (void)value; return true; }}",
            f"    const {t} &Get{a}() const {{ return slot<{t}>({i}); }}",
            f"    {t} &Get{a}() {{ return mutableSlot<{t}>({i}); }}",
            f"    void Set{a}(const {t} &value) {{ setVector({i}, value); }}",
            f"    void Append{s}(const {it} &value) {{ {append} }}",
        ]
        if m.type == "record[]":
            # An item given up by the caller is moved in, not copied: it keeps
            # its flag and logger, and nothing is cloned.
            out.append(f"    void Append{s}({it} &&value) {{ appendMoved({i}, value); }}")
    return out


def enum_declaration(enum):
    seen = set()
    lines = [f"    enum {enum.name} : int {{"]
    for index, name in enumerate(enum.names):
        ident = identifier(enum.name, name)
        if ident in seen:
            raise SchemaError(f"enum {enum.name}: two names give {ident}")
        seen.add(ident)
        lines.append(f"        {ident} = {index}, // {cxx_string(name)}")
    lines.append("    };")
    return lines


def write_header(record):
    r = record.name
    guard = f"MORVANE_RECORDS_{r.upper()}_H"
    includes = sorted({header_name(m.target) for m in record.members if m.target is not None})
    lines = [f"#ifndef {guard}", f"#define {guard}", "",
             "// Generated from the record schema; do not edit.", "",
             '#include "frequencystore/record.h"']
    lines += [f'#include "{h}"' for h in includes]
    lines += ["", "namespace Morvane {", "",
              f"class MORVANE_EXPORT {r} : public Record", "{", "public:"]
    for enum in record.enums.values():
        lines += enum_declaration(enum)
    if record.choice_members:
        lines += enum_declaration(Enum(record.choice_enum, [m.stem for m in record.choice_members]))
    lines += [
        f"    static constexpr qint64 id = {signed32(record.id)}; // {record.id:#010x}",
        "",
        f"    {r}();",
        f"    {r}(const {r} &other);",
        f"    {r}({r} &&other) noexcept;",
        f"    {r} &operator=(const {r} &other);",
        f"    {r} &operator=({r} &&other) noexcept;",
        f"    ~{r}() override;",
        "",
        "    static qint64 GetId() { return id; }",
        f"    bool operator==(const {r} &other) const {{ return equals(other); }}",
        f"    bool operator!=(const {r} &other) const {{ return !equals(other); }}",
    ]
    if record.version:
        lines.append("    const QString &GetInitialVersionLoaded() const { return initialVersionLoaded(); }")
    if record.needs_tr:
        lines += ["    static QString tr(const char *text, const char *comment = nullptr, int n = -1);",
                  "    static QString trUtf8(const char *text, const char *comment = nullptr, int n = -1);"]
    for enum in record.enums.values():
        lines += [f"    static QStringList Get{enum.name}s();", f"    static QStringList GetGUI{enum.name}s();"]
    if record.choice_members:
        c = record.choice_enum
        lines += [
            "",
            f"    // The choice group {c}",
            f"    {c} Get{c}() const {{ return {c}(currentChoice()); }}",
            f"    void Reset{c}() {{ resetChoice(); }}",
            f"    void InitChoice(const {c} &value) {{ initChoice(value); }}",
            f"    QString {c}ToName(const {c} &value) const {{ return choiceToName(value); }}",
            f"    {c} NameTo{c}(const QString &name) const {{ return {c}(nameToChoice(name)); }}",
            f"    bool IsValid{c}(const {c} &value) const {{ return isValidChoice(value); }}",
            f"    {c} GetInvalid{c}() const {{ return {c}(invalidChoice()); }}",
            f"    void SetInvalid{c}(const {c} &value) {{ setInvalidChoice(value); }}",
            f"    static QStringList Get{c}s();",
            f"    static QStringList GetGUI{c}s();",
        ]
    for i, m in enumerate(record.members):
        if m.type != "reserved":
            lines.append("")
            lines += accessors(m, i)
    lines += ["", "protected:",
              "    const detail::RecordDescriptor &descriptor() const override;",
              "};", "", "} // namespace Morvane", "", "#endif", ""]
    return "\n".join(lines)


def default_value(m):
    if m.default is None:
        return None
    if m.type == "enum":
        if m.default not in m.enum.names:
            raise SchemaError(f"{m.record.name}.{m.stem}: default {m.default} is not in {m.enum.name}")
        return str(m.enum.names.index(m.default))
    if m.type == "bool":
        return {"true": "true", "false": "false"}[m.default]
    if m.type == "double":
        return repr(float(m.default))
    if m.type in ("int", "uint"):
        return str(int(m.default))
    if m.type == "string":
        return qs(m.default)
    raise SchemaError(f"{m.record.name}.{m.stem}: no default for a {m.type}")


def data_struct(record):
    r = record.name
    fields, ctor, cases = [], [], []
    for i, m in enumerate(record.members):
        if m.type == "reserved":
            continue
        if m.type in PLAIN_TYPES:
            t = CPP_TYPE[m.type]
            zero = {"double": " = 0.0", "int": " = 0", "uint": " = 0", "bool": " = false"}.get(m.type, "")
            fields.append(f"    {t} d{i}{zero}, c{i}{zero};")
            cases.append(f"        case {i}: return w == detail::Slot::Default ? static_cast<void *>(&d{i}) : &c{i};")
        elif m.type == "enum":
            fields.append(f"    int i{i} = -1, d{i} = -1, c{i} = -1;")
            cases.append(f"        case {i}: return w == detail::Slot::Invalid ? &i{i} : w == detail::Slot::Default ? &d{i} : &c{i};")
        elif m.type == "record":
            t = m.target.name
            fields.append(f"    detail::LazySlot<{t}> d{i};")
            fields.append(f"    detail::LazySlot<{t}> c{i};")
            cases.append(f"        case {i}: return static_cast<Record *>(w == detail::Slot::Current || w == detail::Slot::MadeCurrent ? c{i}.get(w == detail::Slot::Current, this) : d{i}.get(w == detail::Slot::Default));")
        elif m.type == "record[]":
            t = m.target.name
            fields.append(f"    detail::LazySlot<{t}> d{i};")
            fields.append(f"    QVector<{t}> c{i};")
            cases.append(f"        case {i}: return w == detail::Slot::Default || w == detail::Slot::MadeDefault ? static_cast<Record *>(d{i}.get(w == detail::Slot::Default)) : static_cast<void *>(&c{i});")
        else:
            it = item_type(m)
            fields.append(f"    {it} d{i}{'' if m.type != 'double[]' else ' = 0.0'};")
            fields.append(f"    QVector<{it}> c{i};")
            cases.append(f"        case {i}: return w == detail::Slot::Default ? static_cast<void *>(&d{i}) : &c{i};")
        value = default_value(m)
        if value is not None:
            ctor.append(f"        d{i} = {value};")
            # A new block's current slot holds its reset value from the start:
            # the default, but for a QString the null string.
            if m.type != "string":
                ctor.append(f"        c{i} = {value};")
            ctor.append(f"        defaults.setBit({i});")
    lines = [f"struct {r}Data final : detail::RecordData",
             "{",
             f"    {r}Data()",
             "    {"] + ctor + ["    }"] + fields + [
             f"    detail::RecordData *clone() const override {{ return new {r}Data(*this); }}"] + ([
             "    QString initialVersionLoaded;",
             "    QString *loadedVersion() override { return &initialVersionLoaded; }"] if record.version else []) + [
             "    void *slot(int member, detail::Slot w) override",
             "    {",
             "        switch (member) {"] + cases + [
             "        default: break;",
             "        }",
             "        (void)w;",
             "        return nullptr;",
             "    }",
             "};"]
    return lines


def member_info(m):
    low, high = m.range if m.range else (0.0, 0.0)
    flags = " | ".join(MEMBER_FLAGS[f] for f in m.flags) or "0"
    names = f"&{m.record.name}_{m.enum.name}_names()" if m.type == "enum" else "nullptr"
    vector = f"detail::vectorOps<{m.target.name}>()" if m.type == "record[]" else "nullptr"
    item = qs(m.target.name) if m.target is not None else "QString()"
    xml = {"element": "Element", "attribute": "Attribute", "text": "Text", "child": "Child"}[m.xml]
    use = {"mandatory": "Mandatory", "optional": "Optional", "choice": "Choice"}[m.use]
    return (f"        {{{qs(m.stem)}, {qs(m.xml_name)}, {qs(m.field)}, detail::Kind::{m.kind}, "
            f"detail::Xml::{xml}, detail::Use::{use}, {m.tag:#010x}u, {m.choice_value}, "
            f"{'true' if m.range else 'false'}, {low!r}, {high!r}, {m.width}, {m.decimals}, {names}, "
            f"{vector}, {item}, {qs(m.choice_message)}, quint16({flags})}},")


def write_source(source, records):
    lines = ["// Generated from the record schema; do not edit.", ""]
    lines += [f'#include "{header_name(r)}"' for r in records]
    lines += ["", "#include <QtCore/QCoreApplication>", "", "namespace Morvane {", "", "namespace {", ""]
    for r in records:
        for enum in list(r.enums.values()) + ([Enum(r.choice_enum, [m.stem for m in r.choice_members])]
                                               if r.choice_members else []):
            key = f"{r.name}_{enum.name}"
            lines.append(f"const char *const {key}_texts[] = {{{', '.join(cxx_string(n) for n in enum.names)}}};")
            lines.append(f"const QStringList &{key}_names()")
            lines.append("{")
            lines.append(f"    static const QStringList names = {{{', '.join(qs(n) for n in enum.names)}}};")
            lines.append("    return names;")
            lines.append("}")
            lines.append("")
        lines += data_struct(r)
        lines.append("")
        lines.append(f"const detail::RecordDescriptor &{r.name}_descriptor()")
        lines.append("{")
        if r.members:
            lines.append("    static const detail::MemberInfo members[] = {")
            lines += [member_info(m) for m in r.members]
            lines.append("    };")
        else:
            lines.append("    static const detail::MemberInfo *const members = nullptr;")
        stems = [m.stem for m in r.members]
        if r.check:
            order = ", ".join("-1" if w == "choice" else str(stems.index(w)) for w in r.check)
            lines.append(f"    static const int checkOrder[] = {{{order}}};")
        flags = " | ".join(RECORD_FLAGS[f] for f in r.flags) or "0"
        choice = f"&{r.name}_{r.choice_enum}_names()" if r.choice_members else "nullptr"
        lines.append("    static const detail::RecordDescriptor descriptor = {")
        lines.append(f"        {qs(r.name)}, {qs(r.element)}, {r.name}::id, {qs(r.version) if r.version else 'QString()'},")
        lines.append(f"        members, {len(r.members)}, {'checkOrder' if r.check else 'nullptr'}, {len(r.check) if r.check else 0},")
        lines.append(f"        {choice}, quint16({flags}), []() -> detail::RecordData * {{ return new {r.name}Data; }}}};")
        lines.append("    return descriptor;")
        lines.append("}")
        lines.append("")
    lines += ["} // namespace", ""]
    for r in records:
        n = r.name
        lines += [
            f"{n}::{n}() : Record({n}_descriptor()) {{}}",
            f"{n}::{n}(const {n} &other) : Record({n}_descriptor(), other) {{}}",
            f"{n}::{n}({n} &&other) noexcept : Record(std::move(other)) {{}}",
            f"{n} &{n}::operator=({n} &&other) noexcept",
            "{",
            "    assign(std::move(other));",
            "    return *this;",
            "}",
            f"{n} &{n}::operator=(const {n} &other)",
            "{",
            "    assign(other);",
            "    return *this;",
            "}",
            f"{n}::~{n}() = default;",
            f"const detail::RecordDescriptor &{n}::descriptor() const {{ return {n}_descriptor(); }}",
        ]
        if r.needs_tr:
            for fn in ("tr", "trUtf8"):
                lines += [f"QString {n}::{fn}(const char *text, const char *comment, int n)",
                          "{",
                          f'    return QCoreApplication::translate("Morvane::{n}", text, comment, n);',
                          "}"]
        enums = list(r.enums.values())
        if r.choice_members:
            enums.append(Enum(r.choice_enum, [m.stem for m in r.choice_members]))
        for enum in enums:
            key = f"{n}_{enum.name}"
            lines += [f"QStringList {n}::Get{enum.name}s() {{ return {key}_names(); }}",
                      f"QStringList {n}::GetGUI{enum.name}s()",
                      "{",
                      f'    return translated("Morvane::{n}", {key}_texts, {len(enum.names)});',
                      "}"]
        lines.append("")
    lines += ["} // namespace Morvane", ""]
    return "\n".join(lines)


def outputs(records):
    files = {header_name(r): r for r in records}
    sources = {}
    for r in records:
        sources.setdefault(f"records_{r.source}.cpp", []).append(r)
    return files, sources


def write_if_changed(path, text):
    if os.path.exists(path):
        with open(path, encoding="utf-8") as f:
            if f.read() == text:
                return
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as f:
        f.write(text)


def umbrella(records):
    lines = ["#ifndef MORVANE_RECORDS_H", "#define MORVANE_RECORDS_H", "",
             "// Generated from the record schema; do not edit.", ""]
    lines += [f'#include "{header_name(r)}"' for r in sorted(records, key=lambda r: r.name)]
    return "\n".join(lines + ["", "#endif", ""])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", help="directory to write into")
    parser.add_argument("--list", action="store_true", help="print the files that would be written")
    parser.add_argument("schema", nargs="+")
    args = parser.parse_args()
    try:
        records = parse_files(sorted(args.schema))
        headers, sources = outputs(records)
        names = sorted(headers) + ["frequencystore/records/records.h"] + sorted(sources)
        if args.list:
            print(";".join(names))
            return 0
        if not args.out:
            parser.error("--out or --list is needed")
        for path, record in headers.items():
            write_if_changed(os.path.join(args.out, path), write_header(record))
        write_if_changed(os.path.join(args.out, "frequencystore/records/records.h"), umbrella(records))
        for path, group in sources.items():
            write_if_changed(os.path.join(args.out, path), write_source(path, group))
    except SchemaError as error:
        print(f"schema error: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
