// Feeds arbitrary bytes to the readers of a store list: as binary, as
// compressed binary and as XML text; and to those of the list container,
// which holds a store list and a detection result list. A failed read must
// keep what the record held; nothing may crash. (The corpus: fuzz/corpus/storelist/; ctest also
// replays the bundled examples with it.)

#include "fuzztarget.h"

#include <morvane.h>

namespace {

Morvane::FrequencyStoreList &reference()
{
    static Morvane::FrequencyStoreList list = [] {
        Morvane::FrequencyStoreList l;
        l.SetName(QStringLiteral("reference"));
        return l;
    }();
    return list;
}

const Morvane::FrequencyStoreListHelper &helperReference()
{
    static const Morvane::FrequencyStoreListHelper helper = [] {
        Morvane::FrequencyStoreListHelper h;
        h.SetListType(Morvane::FrequencyStoreListHelper::ListType_DetectionResult);
        h.GetDetectionResultList().SetID(QStringLiteral("reference"));
        return h;
    }();
    return helper;
}

} // namespace

void fuzzOne(const QByteArray &input)
{
    using fuzztarget::require;
    {
        Morvane::FrequencyStoreList list = reference();
        QByteArray bytes = input;
        if (!list.SetBinaryRepresentation(bytes))
            require(list == reference(), "a failed binary read changed the list");
    }
    {
        Morvane::FrequencyStoreList list = reference();
        if (!list.SetCompressedBinaryRepresentation(input))
            require(list == reference(), "a failed compressed read changed the list");
    }
    {
        Morvane::FrequencyStoreList list = reference();
        list.SetValidate(input.size() % 2 == 0);
        if (!list.SetXmlString(QString::fromUtf8(input)))
            require(list == reference(), "a failed XML read changed the list");
    }
    for (const bool validate : {true, false}) {
        Morvane::FrequencyStoreListHelper helper = helperReference();
        helper.SetValidate(validate);
        QByteArray bytes = input;
        if (!helper.SetBinaryRepresentation(bytes))
            require(helper == helperReference(), "a failed binary read changed the list container");
        helper = helperReference();
        if (!helper.SetXmlString(QString::fromUtf8(input)))
            require(helper == helperReference(), "a failed XML read changed the list container");
    }
}
