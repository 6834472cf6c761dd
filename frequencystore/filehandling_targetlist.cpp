// The target list file: the notepad columns and the six texts of the
// entry's profile data.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"

namespace Morvane {

using namespace filehandling;

void FileHandling::ExportTargetList(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of TargetList"));
}

void FileHandling::ImportTargetList(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of TargetList"));
}

} // namespace Morvane
