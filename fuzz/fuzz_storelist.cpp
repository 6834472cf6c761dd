// Feeds arbitrary bytes to the readers of a store list: as binary, as
// compressed binary and as XML text. A failed read must keep what the list
// held; nothing may crash. (The corpus: fuzz/corpus/storelist/; ctest also
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
}
