// Detection results as a list file: converted into store entries and written
// as CSV or as the XML of the converted list.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"

namespace Morvane {

using namespace filehandling;

bool FileHandling::ExportFrequencyStoreList(bool csv, const QString &fileName, DetectionResultList &list)
{
    FileHandling handling;
    FrequencyStoreListHelper helper;
    helper.SetListType(FrequencyStoreListHelper::ListType_DetectionResult);
    if (list.IsUsageSet())
        helper.GetFrequencyStoreList().SetUsage(FrequencyStoreList::Usage(int(list.GetUsage())));
    FrequencyStoreList &converted = helper.GetFrequencyStoreList();
    // The conversion is not there yet. Until it is, its failure is reported
    // as the failure of the writing that follows it, in both forms.
    if (csv) {
        try {
            handling.WriteToFile(fileName, handling.ConvertDetectionResults(list, converted));
        } catch (const ORBELIN::OrbelinException &e) {
            FILEHANDLING_TRACE(QStringLiteral("Error writing file %1. %2: %3").arg(fileName, e.GetExceptionName(), e.GetMessage()));
            return false;
        }
        return true;
    }
    try {
        handling.ConvertDetectionResults(list, converted);
    } catch (const ORBELIN::OrbelinException &e) {
        FILEHANDLING_TRACE(QStringLiteral("ExportXml:: Cannot export frequency store to file as error %1").arg(e.GetMessage()));
        return false;
    }
    return handling.ExportXml(fileName, converted);
}

void FileHandling::ExportDetectionResult(const QString &fileName, FrequencyStoreListHelper &helper)
{
    WriteToFile(fileName, ConvertDetectionResults(helper.GetDetectionResultList(), helper.GetFrequencyStoreList()));
}

QString FileHandling::ConvertDetectionResults(DetectionResultList &, FrequencyStoreList &)
{
    NotSupportedYet(QStringLiteral("The conversion of detection results"));
}

} // namespace Morvane
