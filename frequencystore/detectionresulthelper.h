#ifndef MORVANE_DETECTIONRESULTHELPER_H
#define MORVANE_DETECTIONRESULTHELPER_H

#include "frame/morvane_global.h"
#include "frequencystore/records/detectionresultlist.h"
#include "frequencystore/records/frequencystorelist.h"

#include <QtCore/QString>

namespace Morvane {

// Turns a DetectionResultList into a FrequencyStoreList: one leading entry
// for the list, then one entry per result, with a demodulator set up from the
// result's Modulation word. Also writes the results as one CSV text. Holds
// references to both lists and owns neither.
class MORVANE_EXPORT DetectionResultHelper
{
public:
    // Stores the references and fills the store list (Init); what Init
    // throws reaches the caller.
    DetectionResultHelper(DetectionResultList &results, FrequencyStoreList &list);
    DetectionResultHelper(const DetectionResultHelper &other);
    virtual ~DetectionResultHelper();

    // The results as CSV text, header first.
    QString GetCSVString() const;

private:
    void Init();

    DetectionResultList &m_results;
    FrequencyStoreList &m_list;
};

} // namespace Morvane

#endif
