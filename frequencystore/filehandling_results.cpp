// The data results and conventional detection files: the common columns with
// the entry's result list, or with its level and detection times.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"

namespace Morvane {

using namespace filehandling;

void FileHandling::ExportDataResults(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of DataResults"));
}

void FileHandling::ExportDetectionConventional(const QString &, FrequencyStoreListHelper &)
{
    NotSupportedYet(QStringLiteral("The CSV export of DetectionConventional"));
}

void FileHandling::ImportDataResults(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of DataResults"));
}

void FileHandling::ImportDetectionConventional(const QString &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The CSV import of DetectionConventional"));
}

} // namespace Morvane
