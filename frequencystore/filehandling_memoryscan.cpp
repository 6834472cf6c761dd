// The memory scan file: receiver, detail and direction-finding settings, with
// a header that loses the columns the entries lack.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"

namespace Morvane {

using namespace filehandling;

void FileHandling::ExportMemoryScan(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of MemoryScan"));
}

void FileHandling::ImportMemoryScan(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of MemoryScan"));
}

} // namespace Morvane
