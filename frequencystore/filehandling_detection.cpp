// Detection results as a list file: converted into store entries and written
// as CSV or as the XML of the converted list.

#include "frequencystore/filehandling_p.h"

#include "frame/exceptions.h"
#include "frequencystore/detectionresulthelper.h"

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
    // Making the helper is the conversion: its constructor runs Init once,
    // and what Init throws is not caught here but reaches the caller.
    const DetectionResultHelper conversion(list, converted);
    if (csv) {
        try {
            handling.WriteToFile(fileName, conversion.GetCSVString());
        } catch (const ORBELIN::OrbelinException &e) {
            FILEHANDLING_TRACE(QStringLiteral("Error writing file %1. %2: %3").arg(fileName, e.GetExceptionName(), e.GetMessage()));
            return false;
        }
        return true;
    }
    // The XML file is the converted store list, not the detection results.
    return handling.ExportXml(fileName, converted);
}

// The helper's own detection results, converted into its store list (the
// entries are appended behind those it holds) and written as CSV. The CSV
// text comes from the detection results alone.
void FileHandling::ExportDetectionResult(const QString &fileName, FrequencyStoreListHelper &helper)
{
    const DetectionResultHelper conversion(helper.GetDetectionResultList(), helper.GetFrequencyStoreList());
    WriteToFile(fileName, conversion.GetCSVString());
}

} // namespace Morvane
