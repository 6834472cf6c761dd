#ifndef MORVANE_DETECTIONRESULTHELPER_H
#define MORVANE_DETECTIONRESULTHELPER_H

#include "frame/morvane_global.h"
#include "frequencystore/records/demodulator_settings.h"
#include "frequencystore/records/detectionresultlist.h"
#include "frequencystore/records/frequencystorelist.h"

#include <QtCore/QString>

namespace Morvane {

// Turns a DetectionResultList into a FrequencyStoreList: one leading entry
// for the list, then one entry per result, with a demodulator set up from the
// result's Modulation word. Also writes the results as one CSV text. Holds
// references to both lists and owns neither.
//
// The Modulation words, matched exactly and case-sensitively, in this order:
//
//   "ASK2"                                                  ASK_Settings,  Mode 1 (ASK)
//   "MSK", "FSK2", "FSK4"                                   FSK_Settings,  Mode 2 (FSK)
//   "PSK2A", "PSK2B", "PSK4A", "PSK4B", "PSK8A", "PSK8B"    PSK_Settings,  Mode 3 (PSK)
//   "MORSE"                                                 Morse_Settings, Mode 4 (Morse)
//   "MPSK2A", "MPSK2B", "MPSK4A", "MPSK4B"                  MPSK_Settings, Mode 5 (MPSK)
//   "MFSK2"                                                 MFSK_Settings, Mode 6 (MFSK)
//   any other text                                          TransmissionSystem, Mode 14
//
// A result without Modulation gets an entry without Demodulator_Settings.
//
// Failures: the conversion runs in the constructor. The append of the leading
// entry is the only step whose failure is caught (and traced, with the source
// path "frequencystore/detectionresulthelper", under bit 0x20 of the trace
// mask); any other failure of a setter or an append leaves the constructor
// with the entries made so far in the store list.
class MORVANE_EXPORT DetectionResultHelper
{
public:
    // Stores the references and fills the store list (Init); what Init
    // throws reaches the caller.
    DetectionResultHelper(DetectionResultList &results, FrequencyStoreList &list);
    // A second view of the same two lists. The conversion is not run again:
    // the store list was filled when the first helper was made.
    DetectionResultHelper(const DetectionResultHelper &other);
    virtual ~DetectionResultHelper();

    // The results as CSV text, header first. Needs neither the conversion nor
    // the store list.
    QString GetCSVString() const;

private:
    void Init();

    bool IsASK(const DetectionResult &result) const;
    bool IsFSK(const DetectionResult &result) const;
    bool IsPSK(const DetectionResult &result) const;
    bool IsMorse(const DetectionResult &result) const;
    bool IsMPSK(const DetectionResult &result) const;
    bool IsMFSK(const DetectionResult &result) const;

    void ProcessASK(const DetectionResult &result);
    void ProcessFSK(const DetectionResult &result);
    void ProcessPSK(const DetectionResult &result);
    void ProcessMorse(const DetectionResult &result);
    void ProcessMPSK(const DetectionResult &result);
    void ProcessMFSK(const DetectionResult &result);
    void ProcessTransmissionSystem(const DetectionResult &result);

    void InitWithoutDemodulator(const DetectionResult &result);
    void InitCommonSettings(FrequencyStoreEntry &entry, const DetectionResult &result);
    // A new entry with the common settings and the demodulator's Mode.
    FrequencyStoreEntry DemodulatorEntry(const DetectionResult &result, Demodulator_Settings::Mode mode);

    DetectionResultList &m_results;
    FrequencyStoreList &m_list;
};

} // namespace Morvane

#endif
