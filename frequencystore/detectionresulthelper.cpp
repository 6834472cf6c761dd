#include "frequencystore/detectionresulthelper.h"

#include "frame/converters.h"
#include "frame/exceptions.h"
#include "frequencystore/filehandling_p.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <initializer_list>
#include <optional>
#include <utility>

namespace Morvane {

namespace {

// The source path this file gives to the trace.
const QString &sourcePath()
{
    static const QString path = QStringLiteral("frequencystore/detectionresulthelper");
    return path;
}

// Every trace call stands on one line, so that the line traced is the call's.
#define DETECTIONRESULT_TRACE(text) ::Morvane::filehandling::trace(sourcePath(), (text), __LINE__)

const QString &csvHeader()
{
    static const QString header = QStringLiteral(
        "ID;Frequency;Bandwidth;Level;StartTime;StopTime;Confidence;Modulation;TransmissionSystem;Baudrate;Shift;"
        "Decoders;Azimuth;Quality;Longitude;Latitude\n");
    return header;
}

bool isOneOf(const DetectionResult &result, std::initializer_list<const char *> words)
{
    const QString modulation = result.GetModulation();
    for (const char *word : words) {
        if (modulation == QLatin1String(word))
            return true;
    }
    return false;
}

// Step 1 of the entry: the result's Type, "a" when it has none (an unset
// Type counts as empty).
void setEntryType(FrequencyStoreEntry &entry, const DetectionResult &result)
{
    const QString type = result.GetType();
    entry.SetType(type.isEmpty() ? QStringLiteral("a") : type);
}

// Step 2 of the entry: the receiver settings the result carries as XML text,
// read into the entry's FFM_Settings. A failure of the record (an unknown
// element, a bad enumeration name, ...) gives its message, to be traced by
// the caller. Either way a text that did not load leaves FFM_Settings reset,
// to be filled from the result's own numbers afterwards. A text that is not
// well-formed XML, or whose root is not "FFM_Settings", throws nothing: the
// reader answers false, and there is no message to trace then.
std::optional<QString> loadReceiverSettings(FrequencyStoreEntry &entry, const DetectionResult &result)
{
    try {
        if (entry.GetFFM_Settings().SetXmlString(result.GetFFMSettingsWithAnalogDemod(), true))
            return std::nullopt;
        entry.ResetFFM_Settings();
        return std::nullopt;
    } catch (const ORBELIN::OrbelinException &e) {
        entry.ResetFFM_Settings();
        return e.GetMessage();
    }
}

// Steps 3 to 8 of the entry. Frequency, the bandwidth, Level, StartTime and
// Confidence are copied whether the result has them or not: an unset one
// arrives as the result holds it (0, an empty record, an invalid time) with
// its presence bit set in the entry. StopTime is copied
// only when set, and the location only when both coordinates are set.
void fillFromResult(FrequencyStoreEntry &entry, const DetectionResult &result)
{
    FFM_Settings &receiver = entry.GetFFM_Settings();
    receiver.SetFrequency(result.GetFrequency());
    receiver.GetIFBandwidth().SetValue(result.GetBandwidth().GetValue());
    receiver.SetLevel(result.GetLevel());

    Detection &detection = entry.GetDetection();
    detection.SetStartTime(result.GetStartTime());
    if (result.IsStopTimeSet())
        detection.SetStopTime(result.GetStopTime());

    entry.GetResultList().SetConfidence(result.GetConfidence());

    // A single coordinate is no position: no location at all then.
    if (!result.IsLongitudeSet() || !result.IsLatitudeSet())
        return;

    LocationResult located;
    located.SetTimeStamp(result.GetStartTime());
    // The bandwidth of a location result is its DFBandwidth.
    located.SetDFBandwidth(result.GetBandwidth().GetValue());
    // The position of a location result is its "Location" element
    // (LocationResultLocation), which has the members of a Coordinate.
    LocationResultLocation position;
    position.SetLongitude(result.GetLongitude());
    position.SetLatitude(result.GetLatitude());
    located.SetLocation(position);
    LocationResultDetail detail;
    detail.SetFrequency(result.GetFrequency());
    located.SetDetail(detail);

    Station station;
    DFData bearing;
    bearing.SetQuality(result.GetDFQuality());
    bearing.SetFrequency(result.GetFrequency());
    bearing.SetAzimuth(result.GetAzimuth());
    bearing.SetLevel(result.GetLevel());
    station.SetDFData(bearing);
    located.AppendStation(std::move(station));

    FrequencyStoreEntryLocation location;
    location.AppendLocationResult(std::move(located));
    entry.SetLocation(location);
}

} // namespace

DetectionResultHelper::DetectionResultHelper(DetectionResultList &results, FrequencyStoreList &list)
    : m_results(results)
    , m_list(list)
{
    Init();
}

DetectionResultHelper::DetectionResultHelper(const DetectionResultHelper &other)
    : m_results(other.m_results)
    , m_list(other.m_list)
{
}

DetectionResultHelper::~DetectionResultHelper() = default;

// Runs once per helper, from the constructor; FileHandling's "convert, then
// write" is the construction of a helper followed by the writing. A second
// run would append every entry a second time.
void DetectionResultHelper::Init()
{
    // The list's Usage goes over whatever it is: an unset one is the invalid
    // value, which a validating store list refuses, and that failure is not
    // caught.
    m_list.SetUsage(FrequencyStoreList::Usage(int(m_results.GetUsage())));

    // The leading entry stands for the list itself. It has the short-time
    // branch selected but no data in it, so a store list that validates
    // refuses it: that refusal, and only the append's, is traced and the
    // conversion goes on without it. A store list with validation off keeps
    // it. The setters before the append are not guarded: a Usage outside the
    // entry's table, or an unset Comment, ID or Type, ends the conversion.
    FrequencyStoreEntry leading;
    leading.InitChoice(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings);
    leading.SetUsage(FrequencyStoreEntry::Usage(int(m_results.GetUsage())));
    leading.SetComment(m_results.GetComment());
    leading.SetID(m_results.GetID());
    leading.SetType(m_results.GetType());
    try {
        m_list.AppendFrequencyStoreEntry(std::move(leading));
    } catch (const ORBELIN::OrbelinException &e) {
        DETECTIONRESULT_TRACE(QStringLiteral("DetectionResultHelper::Init ") + e.GetMessage());
    }

    // The results are read from a copy (the const getter leaves the source's
    // presence bits alone), each one copied again.
    const QVector<DetectionResult> results = std::as_const(m_results).GetDetectionResult();
    for (const DetectionResult &item : results) {
        const DetectionResult result(item);
        // Without Modulation there is no word to match. A Modulation that is
        // set matches one of the families or goes to the transmission system,
        // the empty text too.
        if (!result.IsModulationSet())
            InitWithoutDemodulator(result);
        else if (IsASK(result))
            ProcessASK(result);
        else if (IsFSK(result))
            ProcessFSK(result);
        else if (IsPSK(result))
            ProcessPSK(result);
        else if (IsMorse(result))
            ProcessMorse(result);
        else if (IsMPSK(result))
            ProcessMPSK(result);
        else if (IsMFSK(result))
            ProcessMFSK(result);
        else
            ProcessTransmissionSystem(result);
    }
}

bool DetectionResultHelper::IsASK(const DetectionResult &result) const
{
    return isOneOf(result, {"ASK2"});
}

bool DetectionResultHelper::IsFSK(const DetectionResult &result) const
{
    return isOneOf(result, {"MSK", "FSK2", "FSK4"});
}

bool DetectionResultHelper::IsPSK(const DetectionResult &result) const
{
    return isOneOf(result, {"PSK2A", "PSK2B", "PSK4A", "PSK4B", "PSK8A", "PSK8B"});
}

bool DetectionResultHelper::IsMorse(const DetectionResult &result) const
{
    return isOneOf(result, {"MORSE"});
}

bool DetectionResultHelper::IsMPSK(const DetectionResult &result) const
{
    return isOneOf(result, {"MPSK2A", "MPSK2B", "MPSK4A", "MPSK4B"});
}

bool DetectionResultHelper::IsMFSK(const DetectionResult &result) const
{
    return isOneOf(result, {"MFSK2"});
}

// The variants below copy the result's Baudrate (and Shift) as they stand:
// a result without one gives a variant without data in it, which the Check
// of the written list then refuses. FSK appends the Shift unconditionally,
// so that an FSK result without a Shift ends the conversion when validation
// is on; only the transmission system looks at the presence bits first.

// The entry every variant starts from: the common settings and the Mode.
FrequencyStoreEntry DetectionResultHelper::DemodulatorEntry(const DetectionResult &result,
                                                            Demodulator_Settings::Mode mode)
{
    FrequencyStoreEntry entry;
    InitCommonSettings(entry, result);
    entry.GetDemodulator_Settings().SetMode(mode);
    return entry;
}

void DetectionResultHelper::ProcessASK(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_ASK);
    ASK_Settings &settings = entry.GetDemodulator_Settings().GetASK_Settings();
    settings.SetBaudrate(result.GetBaudrate());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::ProcessFSK(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_FSK);
    FSK_Settings &settings = entry.GetDemodulator_Settings().GetFSK_Settings();
    settings.SetModType(settings.NameToModType(result.GetModulation()));
    settings.SetBaudrate(result.GetBaudrate());
    settings.AppendShift(result.GetShift());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::ProcessPSK(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_PSK);
    PSK_Settings &settings = entry.GetDemodulator_Settings().GetPSK_Settings();
    settings.SetModType(settings.NameToModType(result.GetModulation()));
    settings.SetBaudrate(result.GetBaudrate());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::ProcessMorse(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_Morse);
    Morse_Settings &settings = entry.GetDemodulator_Settings().GetMorse_Settings();
    settings.SetAutoMode(true);
    // The baud rate stands in for the keying speed, number for number.
    settings.SetSpeed(result.GetBaudrate().GetValue());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::ProcessMPSK(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_MPSK);
    MPSK_Settings &settings = entry.GetDemodulator_Settings().GetMPSK_Settings();
    const QString modulation = result.GetModulation();
    const bool fourPhases = modulation == QLatin1String("MPSK4A") || modulation == QLatin1String("MPSK4B");
    settings.SetModType(fourPhases ? MPSK_Settings::ModType_McPSK4 : MPSK_Settings::ModType_McPSK2);
    settings.SetBaudrate(result.GetBaudrate());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::ProcessMFSK(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_MFSK);
    MFSK_Settings &settings = entry.GetDemodulator_Settings().GetMFSK_Settings();
    settings.SetModType(MFSK_Settings::ModType_McFSK2);
    settings.SetBaudrate(result.GetBaudrate());
    settings.SetShift(result.GetShift());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::ProcessTransmissionSystem(const DetectionResult &result)
{
    FrequencyStoreEntry entry = DemodulatorEntry(result, Demodulator_Settings::Mode_TransmissionSystem);
    TransmissionSystem &settings = entry.GetDemodulator_Settings().GetTransmissionSystem();
    // Init calls this only for a result with Modulation, so the last name is
    // for a caller that has neither text.
    if (result.IsTransmissionSystemSet())
        settings.SetMode(result.GetTransmissionSystem());
    else if (result.IsModulationSet())
        settings.SetMode(result.GetModulation());
    else
        settings.SetMode(QStringLiteral("TransmissionSystem"));
    if (result.IsModulationSet())
        settings.SetModType(result.GetModulation());
    if (result.IsBaudrateSet())
        settings.SetBaudrate(result.GetBaudrate());
    if (result.IsShiftSet())
        settings.AppendShift(result.GetShift());
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

// The entry of a result without Modulation: the result's ID (the only entry
// that carries one), the receiver, detection, confidence and location as for
// every entry, and no Demodulator_Settings.
void DetectionResultHelper::InitWithoutDemodulator(const DetectionResult &result)
{
    FrequencyStoreEntry entry;
    entry.SetID(result.GetID());
    setEntryType(entry, result);
    if (result.IsFFMSettingsWithAnalogDemodSet()) {
        if (const std::optional<QString> message = loadReceiverSettings(entry, result))
            DETECTIONRESULT_TRACE(QStringLiteral("InitWithoutDemodulator : ") + *message);
    }
    fillFromResult(entry, result);
    m_list.AppendFrequencyStoreEntry(std::move(entry));
}

void DetectionResultHelper::InitCommonSettings(FrequencyStoreEntry &entry, const DetectionResult &result)
{
    setEntryType(entry, result);
    if (result.IsFFMSettingsWithAnalogDemodSet()) {
        if (const std::optional<QString> message = loadReceiverSettings(entry, result))
            DETECTIONRESULT_TRACE(*message);
    }
    fillFromResult(entry, result);

    Demodulator_Settings &demodulator = entry.GetDemodulator_Settings();
    demodulator.SetFrequencyOffset(0.0);
    // "a,,b" names two decoders, not three.
    const QStringList decoders = result.GetDecoder().split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (!decoders.isEmpty()) {
        Decoder decoder;
        for (const QString &name : decoders)
            decoder.AppendValue(name);
        demodulator.SetDecoder(decoder);
    }
    // Handed over as it stands; what the text means is the demodulator's
    // business.
    const QString parameters = result.GetDemodulatorRawParameters();
    if (!parameters.isEmpty())
        demodulator.SetParameters(parameters);
}

// One row per result, in list order, from a copy of each. Only an unset
// member gives "---", where the column has a placeholder; a set member is
// written as it stands, an empty text as an empty cell. An unset Latitude
// gives nothing at all, so that such a row ends in ";" after Longitude and
// still has the header's 16 fields.
QString DetectionResultHelper::GetCSVString() const
{
    using filehandling::fixed;
    const QString &none = filehandling::emptyCell();
    QString text = csvHeader();
    // Each cell and its separator go onto the text as they are, without a
    // joined string between.
    const auto cell = [&text](const QString &value) {
        text += value;
        text += QLatin1Char(';');
    };
    const QVector<DetectionResult> results = std::as_const(m_results).GetDetectionResult();
    for (const DetectionResult &item : results) {
        const DetectionResult result(item);
        cell(result.GetID());
        cell(fixed(result.GetFrequency().GetValue(), 2));
        cell(fixed(result.GetBandwidth().GetValue(), 2));
        cell(result.IsLevelSet() ? fixed(result.GetLevel(), 2) : none);
        cell(ORBELIN::Converters::ToString(result.GetStartTime()));
        cell(result.IsStopTimeSet() ? ORBELIN::Converters::ToString(result.GetStopTime()) : none);
        cell(result.IsConfidenceSet() ? QString::number(result.GetConfidence()) : none);
        cell(result.IsModulationSet() ? result.GetModulation() : none);
        cell(result.IsTransmissionSystemSet() ? result.GetTransmissionSystem() : none);
        cell(result.IsBaudrateSet() ? fixed(result.GetBaudrate().GetValue(), 2) : none);
        cell(result.IsShiftSet() ? fixed(result.GetShift().GetValue(), 2) : none);
        cell(result.IsDecoderSet() ? result.GetDecoder() : none);
        cell(result.IsAzimuthSet() ? fixed(result.GetAzimuth(), 2) : none);
        cell(result.IsDFQualitySet() ? fixed(result.GetDFQuality(), 2) : none);
        cell(result.IsLongitudeSet() ? fixed(result.GetLongitude(), 6) : none);
        if (result.IsLatitudeSet())
            text += fixed(result.GetLatitude(), 6);
        text += QLatin1Char('\n');
        if (&item == results.constData())
            filehandling::reserveRows(text, csvHeader().size(), results.size());
    }
    return text;
}

} // namespace Morvane
