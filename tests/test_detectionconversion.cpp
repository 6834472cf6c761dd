// DetectionResultHelper: detection results converted into store entries (the
// leading entry, the modulation words and their demodulator variants, the
// members every entry gets), the CSV text of the results, the trace, and
// FileHandling's export of a DetectionResultList as CSV and as XML to real
// files.

#include "filehandlingtestsupport.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

#include <type_traits>
#include <utility>
#include <vector>

using namespace Morvane;
using MorvaneTest::FileHandlingTest;
using MorvaneTest::TraceLine;
using MorvaneTest::entries;

static_assert(std::is_polymorphic<DetectionResultHelper>::value, "DetectionResultHelper is polymorphic");
static_assert(std::has_virtual_destructor<DetectionResultHelper>::value, "");
static_assert(std::is_copy_constructible<DetectionResultHelper>::value, "");

namespace {

const QString header = QStringLiteral("ID;Frequency;Bandwidth;Level;StartTime;StopTime;Confidence;Modulation;"
                                      "TransmissionSystem;Baudrate;Shift;Decoders;Azimuth;Quality;Longitude;Latitude\n");
const QString helperSource = QStringLiteral("frequencystore/detectionresulthelper");
const QString refusedLeadingEntry = QStringLiteral(
    "DetectionResultHelper::Init FrequencyStoreList: Tried to append not completely defined or invalid item "
    "FrequencyStoreEntry.");

// A result with what every result has: ID, Type, Frequency and Bandwidth.
DetectionResult minimalResult(const QString &id, double frequency = 7000000.0, double bandwidth = 3000.0)
{
    DetectionResult r;
    r.SetID(id);
    r.SetType(QStringLiteral("Burst"));
    r.SetFrequency(samples::valueRecord<Frequency>(frequency));
    r.SetBandwidth(samples::valueRecord<Bandwidth>(bandwidth));
    return r;
}

// A result with every member but FFMSettingsWithAnalogDemod and
// DemodulatorRawParameters set.
DetectionResult fullResult(const QString &modulation)
{
    DetectionResult r = minimalResult(QStringLiteral("det-full"));
    r.SetFrequency(samples::frequency());
    r.SetBandwidth(samples::bandwidth());
    r.SetLevel(-73.5);
    r.SetStartTime(samples::utc(2026, 11, 23, 8, 30, 0, 125));
    r.SetStopTime(samples::utc(2026, 11, 23, 8, 31, 2, 7));
    r.SetConfidence(87);
    r.SetModulation(modulation);
    r.SetTransmissionSystem(QStringLiteral("POCSAG"));
    r.SetBaudrate(samples::baudrate());
    r.SetShift(samples::shift());
    r.SetDecoder(QStringLiteral("pager,,sds"));
    r.SetAzimuth(271.5);
    r.SetDFQuality(88.25);
    r.SetLongitude(-180.0);
    r.SetLatitude(90.0);
    return r;
}

// A result whose demodulator variant has data: Baudrate and Shift set.
DetectionResult modulated(const QString &modulation, const QString &id = QStringLiteral("det-m"))
{
    DetectionResult r = minimalResult(id);
    r.SetModulation(modulation);
    r.SetBaudrate(samples::baudrate());
    r.SetShift(samples::shift());
    r.SetStartTime(samples::utc(2026, 1, 2, 3, 4, 5, 6));
    r.SetConfidence(50);
    r.SetLevel(-90.25);
    return r;
}

DetectionResultList resultList(std::initializer_list<DetectionResult> results = {})
{
    DetectionResultList l;
    l.SetUsage(DetectionResultList::Usage_Target);
    l.SetComment(QStringLiteral("night watch"));
    l.SetID(QStringLiteral("list-7"));
    l.SetType(QStringLiteral("Scan"));
    // Straight into the vector: the list's own append refuses a result
    // without Frequency or Bandwidth, and some tests need one.
    for (const DetectionResult &r : results)
        l.GetDetectionResult().append(r);
    return l;
}

// The store list the results convert into, with the store list's validation
// as asked.
FrequencyStoreList converted(DetectionResultList &results, bool validate = true)
{
    FrequencyStoreList list;
    list.SetValidate(validate);
    DetectionResultHelper helper(results, list);
    return list;
}

// The one entry a single result converts into (the leading entry is refused
// by the validating list).
FrequencyStoreEntry convertedEntry(const DetectionResult &result)
{
    DetectionResultList results = resultList({result});
    const FrequencyStoreList list = converted(results);
    if (entries(list).size() != 1) {
        ADD_FAILURE() << "expected one entry, got " << entries(list).size();
        return FrequencyStoreEntry();
    }
    return entries(list).at(0);
}

const Demodulator_Settings &demodulatorOf(const FrequencyStoreEntry &entry)
{
    return entry.GetDemodulator_Settings();
}

// The message of the exception of type E that action throws.
template <class E, class Action>
QString messageOf(Action action)
{
    try {
        action();
    } catch (const E &e) {
        return e.GetMessage();
    }
    return QStringLiteral("<nothing thrown>");
}

QString csvOf(DetectionResultList &results)
{
    FrequencyStoreList list;
    list.SetValidate(false);
    return DetectionResultHelper(results, list).GetCSVString();
}

class DetectionConversion : public FileHandlingTest
{
protected:
    // The texts traced, but for the refusal of the leading entry, which every
    // conversion into a validating list traces.
    QStringList otherTexts() const
    {
        QStringList out = texts();
        out.removeAll(refusedLeadingEntry);
        return out;
    }
};

class DetectionResultHelperCSV : public FileHandlingTest
{
};

class FileHandlingDetectionResults : public FileHandlingTest
{
};

} // namespace

// --- the leading entry and the list ----------------------------------------------------------

TEST_F(DetectionConversion, AnEmptyListGivesJustTheLeadingEntryAndACSVTextOfJustTheHeader)
{
    // With validation off the store list keeps the leading entry, which has
    // the short-time branch selected but nothing in it.
    DetectionResultList results = resultList();
    FrequencyStoreList list;
    list.SetValidate(false);
    DetectionResultHelper helper(results, list);

    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &leading = entries(list).at(0);
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings, leading.GetChoiceFrequencyStoreEntry());
    EXPECT_FALSE(leading.GetShortTime_Settings().HasData());
    EXPECT_EQ(FrequencyStoreEntry::Usage_Target, leading.GetUsage());
    EXPECT_EQ(QStringLiteral("night watch"), leading.GetComment());
    EXPECT_EQ(QStringLiteral("list-7"), leading.GetID());
    EXPECT_EQ(QStringLiteral("Scan"), leading.GetType());
    EXPECT_FALSE(leading.IsDemodulator_SettingsSet());
    EXPECT_FALSE(leading.IsFFM_SettingsSet());
    EXPECT_EQ(FrequencyStoreList::Usage_Target, list.GetUsage());
    EXPECT_TRUE(lines.empty());

    EXPECT_EQ(header, helper.GetCSVString());
}

TEST_F(DetectionConversion, AValidatingStoreListRefusesTheLeadingEntryWithATraceAndTheConversionGoesOn)
{
    DetectionResultList results = resultList({modulated(QStringLiteral("ASK2"), QStringLiteral("one")),
                                              minimalResult(QStringLiteral("two"))});
    FrequencyStoreList list;
    EXPECT_NO_THROW(DetectionResultHelper(results, list));

    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings, entries(list).at(0).GetChoiceFrequencyStoreEntry());
    EXPECT_EQ(QStringLiteral("two"), entries(list).at(1).GetID());
    ASSERT_EQ(1u, lines.size());
    EXPECT_EQ(refusedLeadingEntry, lines[0].text);
    EXPECT_EQ(helperSource, lines[0].file);
    // The list's Usage is copied all the same.
    EXPECT_EQ(FrequencyStoreList::Usage_Target, list.GetUsage());
}

TEST_F(DetectionConversion, TheConversionRunsOnceAndACopyOfTheHelperDoesNotRunItAgain)
{
    DetectionResultList results = resultList({modulated(QStringLiteral("MORSE")), minimalResult(QStringLiteral("x"))});
    FrequencyStoreList list;
    list.SetValidate(false);
    DetectionResultHelper helper(results, list);
    ASSERT_EQ(3, entries(list).size());
    const FrequencyStoreList after = list;

    DetectionResultHelper copy(helper);
    EXPECT_EQ(after, list);
    EXPECT_EQ(3, entries(list).size());
    EXPECT_EQ(helper.GetCSVString(), copy.GetCSVString());
}

TEST_F(DetectionConversion, TheEntriesAreAppendedBehindThoseTheStoreListHolds)
{
    FrequencyStoreList list;
    FrequencyStoreEntry old;
    old.SetType(QStringLiteral("Old"));
    old.GetFFM_Settings().GetFrequency().SetValue(1.0);
    old.GetFFM_Settings().GetIFBandwidth().SetValue(2.0);
    list.AppendFrequencyStoreEntry(old);

    DetectionResultList results = resultList({minimalResult(QStringLiteral("new"))});
    DetectionResultHelper helper(results, list);
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("Old"), entries(list).at(0).GetType());
    EXPECT_EQ(QStringLiteral("new"), entries(list).at(1).GetID());
}

TEST_F(DetectionConversion, TheDetectionResultsAreLeftAsTheyWere)
{
    DetectionResultList results = resultList({fullResult(QStringLiteral("FSK2")), minimalResult(QStringLiteral("m"))});
    const DetectionResultList before = results;
    FrequencyStoreList list;
    DetectionResultHelper helper(results, list);
    helper.GetCSVString();
    EXPECT_EQ(before, results);
}

TEST_F(DetectionConversion, AnUnsetUsageOfTheResultsFailsAtTheStoreListAndReachesTheCaller)
{
    DetectionResultList results = resultList({minimalResult(QStringLiteral("a"))});
    results.ResetUsage();
    FrequencyStoreList list;
    EXPECT_EQ(QStringLiteral("enum is not valid (classname=FrequencyStoreList,membername=m_usage)"),
              messageOf<ORBELIN::OutOfRangeException>([&] { DetectionResultHelper helper(results, list); }));
    EXPECT_TRUE(entries(list).isEmpty());
    EXPECT_TRUE(lines.empty());

    // A store list without validation takes it; the leading entry, which
    // validates on its own, does not, and that failure is not caught either.
    FrequencyStoreList unchecked;
    unchecked.SetValidate(false);
    EXPECT_EQ(QStringLiteral("enum is not valid (classname=FrequencyStoreEntry,membername=m_usage)"),
              messageOf<ORBELIN::OutOfRangeException>([&] { DetectionResultHelper helper(results, unchecked); }));
    EXPECT_TRUE(entries(unchecked).isEmpty());
    EXPECT_TRUE(lines.empty());
}

TEST_F(DetectionConversion, OnlyTheAppendOfTheLeadingEntryIsGuardedNotItsSetters)
{
    // An unset (null) Comment fails in SetComment, before the append.
    DetectionResultList results = resultList({minimalResult(QStringLiteral("a"))});
    results.ResetComment();
    FrequencyStoreList list;
    list.SetValidate(false);
    EXPECT_EQ(QStringLiteral("FrequencyStoreEntry: Please set Comment properly."),
              messageOf<ORBELIN::OutOfRangeException>([&] { DetectionResultHelper helper(results, list); }));
    EXPECT_TRUE(entries(list).isEmpty());
    EXPECT_TRUE(lines.empty());
}

TEST_F(DetectionConversion, AFailingAppendEndsTheConversionAndKeepsTheEntriesMadeSoFar)
{
    // A result without Frequency gives an entry whose receiver settings have
    // no data: the validating store list refuses it and nothing catches that.
    DetectionResult noFrequency = minimalResult(QStringLiteral("second"));
    noFrequency.ResetFrequency();
    DetectionResultList results = resultList(
        {modulated(QStringLiteral("PSK2A"), QStringLiteral("first")), noFrequency, minimalResult(QStringLiteral("third"))});
    FrequencyStoreList list;
    EXPECT_EQ(QStringLiteral("FrequencyStoreList: Tried to append not completely defined or invalid item FrequencyStoreEntry."),
              messageOf<ORBELIN::IncompleteDefinitionException>([&] { DetectionResultHelper helper(results, list); }));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_EQ(Demodulator_Settings::Mode_PSK, demodulatorOf(entries(list).at(0)).GetMode());
    EXPECT_EQ(QStringList{refusedLeadingEntry}, texts());
}

TEST_F(DetectionConversion, AnFSKResultWithoutShiftEndsTheConversionWhileTheTransmissionSystemSkipsIt)
{
    DetectionResult fsk = modulated(QStringLiteral("FSK2"), QStringLiteral("fsk"));
    fsk.ResetShift();
    DetectionResultList results = resultList({modulated(QStringLiteral("ASK2"), QStringLiteral("ask")), fsk});
    FrequencyStoreList list;
    EXPECT_EQ(QStringLiteral("FSK_Settings: Tried to append not completely defined or invalid item Shift."),
              messageOf<ORBELIN::IncompleteDefinitionException>([&] { DetectionResultHelper helper(results, list); }));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_EQ(Demodulator_Settings::Mode_ASK, demodulatorOf(entries(list).at(0)).GetMode());

    DetectionResult other = modulated(QStringLiteral("CW-42"));
    other.ResetShift();
    other.ResetBaudrate();
    const FrequencyStoreEntry entry = convertedEntry(other);
    const TransmissionSystem &system = demodulatorOf(entry).GetTransmissionSystem();
    EXPECT_TRUE(system.GetShift().isEmpty());
    EXPECT_FALSE(system.IsBaudrateSet());
}

// --- the modulation words ------------------------------------------------------------------

TEST_F(DetectionConversion, EachModulationWordDispatchesToItsVariantAndMode)
{
    struct Case
    {
        const char *word;
        Demodulator_Settings::ChoiceDemodulator_Settings branch;
        Demodulator_Settings::Mode mode;
    };
    const Case cases[] = {
        {"ASK2", Demodulator_Settings::ChoiceDemodulator_Settings_ASK_Settings, Demodulator_Settings::Mode_ASK},
        {"MSK", Demodulator_Settings::ChoiceDemodulator_Settings_FSK_Settings, Demodulator_Settings::Mode_FSK},
        {"FSK2", Demodulator_Settings::ChoiceDemodulator_Settings_FSK_Settings, Demodulator_Settings::Mode_FSK},
        {"FSK4", Demodulator_Settings::ChoiceDemodulator_Settings_FSK_Settings, Demodulator_Settings::Mode_FSK},
        {"PSK2A", Demodulator_Settings::ChoiceDemodulator_Settings_PSK_Settings, Demodulator_Settings::Mode_PSK},
        {"PSK2B", Demodulator_Settings::ChoiceDemodulator_Settings_PSK_Settings, Demodulator_Settings::Mode_PSK},
        {"PSK4A", Demodulator_Settings::ChoiceDemodulator_Settings_PSK_Settings, Demodulator_Settings::Mode_PSK},
        {"PSK4B", Demodulator_Settings::ChoiceDemodulator_Settings_PSK_Settings, Demodulator_Settings::Mode_PSK},
        {"PSK8A", Demodulator_Settings::ChoiceDemodulator_Settings_PSK_Settings, Demodulator_Settings::Mode_PSK},
        {"PSK8B", Demodulator_Settings::ChoiceDemodulator_Settings_PSK_Settings, Demodulator_Settings::Mode_PSK},
        {"MORSE", Demodulator_Settings::ChoiceDemodulator_Settings_Morse_Settings, Demodulator_Settings::Mode_Morse},
        {"MPSK2A", Demodulator_Settings::ChoiceDemodulator_Settings_MPSK_Settings, Demodulator_Settings::Mode_MPSK},
        {"MPSK2B", Demodulator_Settings::ChoiceDemodulator_Settings_MPSK_Settings, Demodulator_Settings::Mode_MPSK},
        {"MPSK4A", Demodulator_Settings::ChoiceDemodulator_Settings_MPSK_Settings, Demodulator_Settings::Mode_MPSK},
        {"MPSK4B", Demodulator_Settings::ChoiceDemodulator_Settings_MPSK_Settings, Demodulator_Settings::Mode_MPSK},
        {"MFSK2", Demodulator_Settings::ChoiceDemodulator_Settings_MFSK_Settings, Demodulator_Settings::Mode_MFSK},
        {"STANAG 4285", Demodulator_Settings::ChoiceDemodulator_Settings_TransmissionSystem,
         Demodulator_Settings::Mode_TransmissionSystem},
    };
    for (const Case &c : cases) {
        const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String(c.word)));
        ASSERT_TRUE(entry.IsDemodulator_SettingsSet()) << c.word;
        const Demodulator_Settings &demodulator = demodulatorOf(entry);
        EXPECT_EQ(c.branch, demodulator.GetChoiceDemodulator_Settings()) << c.word;
        EXPECT_EQ(c.mode, demodulator.GetMode()) << c.word;
        // The FSK variant's Detail is mandatory and the conversion has none
        // to give: such an entry does not pass Check. The others do.
        if (c.mode == Demodulator_Settings::Mode_FSK) {
            EXPECT_FALSE(demodulator.HasData()) << c.word;
            EXPECT_THROW(demodulator.Check(), ORBELIN::IncompleteDefinitionException) << c.word;
        } else {
            EXPECT_TRUE(demodulator.HasData()) << c.word;
            EXPECT_NO_THROW(demodulator.Check()) << c.word;
        }
    }
    EXPECT_EQ(1, int(Demodulator_Settings::Mode_ASK));
    EXPECT_EQ(14, int(Demodulator_Settings::Mode_TransmissionSystem));
}

TEST_F(DetectionConversion, TheWordsMatchExactlyAndCaseSensitively)
{
    for (const char *word : {"ask2", "Fsk2", "FSK2 ", " MSK", "psk2a", "PSK2", "Morse", "morse", "MPSK8A", "MFSK4",
                             "MFSK", "FSK", "ASK"}) {
        const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String(word)));
        EXPECT_EQ(Demodulator_Settings::ChoiceDemodulator_Settings_TransmissionSystem,
                  demodulatorOf(entry).GetChoiceDemodulator_Settings())
            << word;
        EXPECT_EQ(Demodulator_Settings::Mode_TransmissionSystem, demodulatorOf(entry).GetMode()) << word;
        EXPECT_EQ(QLatin1String(word), demodulatorOf(entry).GetTransmissionSystem().GetModType()) << word;
    }
}

TEST_F(DetectionConversion, AWordThatContainsAnotherFamilysWordGoesToItsOwnFamily)
{
    // The families are tried in order (ASK, FSK, PSK, Morse, MPSK, MFSK), each
    // by whole words: "MPSK2A" holds "PSK2A" and "MFSK2" holds "FSK2", yet
    // neither goes to the earlier family.
    EXPECT_EQ(Demodulator_Settings::Mode_MPSK, demodulatorOf(convertedEntry(modulated(QStringLiteral("MPSK2A")))).GetMode());
    EXPECT_EQ(Demodulator_Settings::Mode_MFSK, demodulatorOf(convertedEntry(modulated(QStringLiteral("MFSK2")))).GetMode());
    EXPECT_EQ(Demodulator_Settings::Mode_FSK, demodulatorOf(convertedEntry(modulated(QStringLiteral("FSK2")))).GetMode());
    EXPECT_EQ(Demodulator_Settings::Mode_PSK, demodulatorOf(convertedEntry(modulated(QStringLiteral("PSK2A")))).GetMode());
}

TEST_F(DetectionConversion, ASKTakesTheBaudrate)
{
    const FrequencyStoreEntry entry = convertedEntry(modulated(QStringLiteral("ASK2")));
    const ASK_Settings &ask = demodulatorOf(entry).GetASK_Settings();
    EXPECT_EQ(samples::baudrate(), ask.GetBaudrate());
    EXPECT_FALSE(ask.IsDetailSet());
}

TEST_F(DetectionConversion, FSKTakesTheModTypeOfItsWordTheBaudrateAndOneShift)
{
    const std::pair<const char *, FSK_Settings::ModType> cases[] = {
        {"FSK2", FSK_Settings::ModType_FSK2}, {"FSK4", FSK_Settings::ModType_FSK4}, {"MSK", FSK_Settings::ModType_MSK}};
    for (const auto &c : cases) {
        const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String(c.first)));
        const FSK_Settings &fsk = demodulatorOf(entry).GetFSK_Settings();
        EXPECT_EQ(c.second, fsk.GetModType()) << c.first;
        EXPECT_EQ(samples::baudrate(), fsk.GetBaudrate()) << c.first;
        ASSERT_EQ(1, fsk.GetShift().size()) << c.first;
        EXPECT_EQ(samples::shift(), fsk.GetShift().at(0)) << c.first;
    }
}

TEST_F(DetectionConversion, PSKTakesTheModTypeOfItsWordAndTheBaudrate)
{
    const char *const words[] = {"PSK2A", "PSK2B", "PSK4A", "PSK4B", "PSK8A", "PSK8B"};
    for (int i = 0; i < 6; ++i) {
        const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String(words[i])));
        const PSK_Settings &psk = demodulatorOf(entry).GetPSK_Settings();
        EXPECT_EQ(i, int(psk.GetModType())) << words[i];
        EXPECT_EQ(QLatin1String(words[i]), psk.GetModTypeAsString()) << words[i];
        EXPECT_EQ(samples::baudrate(), psk.GetBaudrate()) << words[i];
    }
}

TEST_F(DetectionConversion, MorseTakesTheBaudrateValueAsItsSpeedInAutoMode)
{
    DetectionResult r = modulated(QStringLiteral("MORSE"));
    r.SetBaudrate(samples::valueRecord<Baudrate>(18.75));
    const FrequencyStoreEntry entry = convertedEntry(r);
    const Morse_Settings &morse = demodulatorOf(entry).GetMorse_Settings();
    EXPECT_TRUE(morse.IsAutoModeSet());
    EXPECT_TRUE(morse.GetAutoMode());
    EXPECT_EQ(18.75, morse.GetSpeed());
}

TEST_F(DetectionConversion, MPSKTakesModType0ForTwoPhasesAnd1ForFour)
{
    const std::pair<const char *, int> cases[] = {{"MPSK2A", 0}, {"MPSK2B", 0}, {"MPSK4A", 1}, {"MPSK4B", 1}};
    for (const auto &c : cases) {
        const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String(c.first)));
        const MPSK_Settings &mpsk = demodulatorOf(entry).GetMPSK_Settings();
        EXPECT_EQ(c.second, int(mpsk.GetModType())) << c.first;
        EXPECT_EQ(samples::baudrate(), mpsk.GetBaudrate()) << c.first;
    }
}

TEST_F(DetectionConversion, MFSKTakesModType0TheBaudrateAndTheShift)
{
    const FrequencyStoreEntry entry = convertedEntry(modulated(QStringLiteral("MFSK2")));
    const MFSK_Settings &mfsk = demodulatorOf(entry).GetMFSK_Settings();
    EXPECT_EQ(MFSK_Settings::ModType_McFSK2, mfsk.GetModType());
    EXPECT_EQ(samples::baudrate(), mfsk.GetBaudrate());
    EXPECT_EQ(samples::shift(), mfsk.GetShift());
}

TEST_F(DetectionConversion, AWordOutsideTheTableGoesToTheTransmissionSystemNamedByTheResultElseByTheWord)
{
    DetectionResult named = modulated(QStringLiteral("8-PSK burst"));
    named.SetTransmissionSystem(QStringLiteral("ALE 2G"));
    FrequencyStoreEntry entry = convertedEntry(named);
    const TransmissionSystem &system = demodulatorOf(entry).GetTransmissionSystem();
    EXPECT_EQ(Demodulator_Settings::Mode_TransmissionSystem, demodulatorOf(entry).GetMode());
    EXPECT_EQ(QStringLiteral("ALE 2G"), system.GetMode());
    EXPECT_EQ(QStringLiteral("8-PSK burst"), system.GetModType());
    EXPECT_EQ(samples::baudrate(), system.GetBaudrate());
    ASSERT_EQ(1, system.GetShift().size());
    EXPECT_EQ(samples::shift(), system.GetShift().at(0));

    entry = convertedEntry(modulated(QStringLiteral("8-PSK burst")));
    EXPECT_EQ(QStringLiteral("8-PSK burst"), demodulatorOf(entry).GetTransmissionSystem().GetMode());
    EXPECT_EQ(QStringLiteral("8-PSK burst"), demodulatorOf(entry).GetTransmissionSystem().GetModType());
}

TEST_F(DetectionConversion, AnEmptyModulationIsAWordOutsideTheTableNotAMissingOne)
{
    const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String("")));
    ASSERT_TRUE(entry.IsDemodulator_SettingsSet());
    const TransmissionSystem &system = demodulatorOf(entry).GetTransmissionSystem();
    EXPECT_EQ(Demodulator_Settings::Mode_TransmissionSystem, demodulatorOf(entry).GetMode());
    EXPECT_TRUE(system.IsModeSet());
    EXPECT_EQ(QLatin1String(""), system.GetMode());
    EXPECT_TRUE(system.IsModTypeSet());
    EXPECT_FALSE(entry.IsIDSet());
}

TEST_F(DetectionConversion, AResultWithoutModulationGetsItsIDAndNoDemodulator)
{
    DetectionResult r = fullResult(QStringLiteral("ASK2"));
    r.ResetModulation();
    r.SetDemodulatorRawParameters(QStringLiteral("x=1"));
    const FrequencyStoreEntry entry = convertedEntry(r);
    EXPECT_EQ(QStringLiteral("det-full"), entry.GetID());
    EXPECT_FALSE(entry.IsDemodulator_SettingsSet());
    EXPECT_EQ(QStringLiteral("Burst"), entry.GetType());
    // Steps 1 to 8 as for every entry.
    EXPECT_EQ(samples::frequency(), entry.GetFFM_Settings().GetFrequency());
    EXPECT_EQ(12500.5, entry.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_EQ(-73.5, entry.GetFFM_Settings().GetLevel());
    EXPECT_EQ(87, entry.GetResultList().GetConfidence());
    EXPECT_TRUE(entry.IsLocationSet());
    EXPECT_NO_THROW(entry.Check());
}

TEST_F(DetectionConversion, TheDemodulatorEntriesCarryNoID)
{
    for (const char *word : {"ASK2", "FSK2", "PSK2A", "MORSE", "MPSK2A", "MFSK2", "other"}) {
        const FrequencyStoreEntry entry = convertedEntry(modulated(QLatin1String(word)));
        EXPECT_FALSE(entry.IsIDSet()) << word;
        EXPECT_EQ(QStringLiteral("FrequencyStoreEntry"), entry.GetObjectName()) << word;
    }
}

// --- the members every entry gets ----------------------------------------------------------

TEST_F(DetectionConversion, AResultGivesTheEntryItsReceiverDetectionConfidenceAndDemodulatorFrame)
{
    DetectionResult r = fullResult(QStringLiteral("ASK2"));
    r.SetDemodulatorRawParameters(QStringLiteral("AGC=fast;Squelch=-100"));
    const FrequencyStoreEntry entry = convertedEntry(r);

    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings, entry.GetChoiceFrequencyStoreEntry());
    EXPECT_EQ(QStringLiteral("Burst"), entry.GetType());
    const FFM_Settings &receiver = entry.GetFFM_Settings();
    // The whole Frequency record, span and Use included.
    EXPECT_EQ(samples::frequency(), receiver.GetFrequency());
    // The bandwidth's value alone.
    EXPECT_EQ(samples::valueRecord<IFBandwidth>(12500.5), receiver.GetIFBandwidth());
    EXPECT_EQ(-73.5, receiver.GetLevel());
    EXPECT_FALSE(receiver.IsAnalogDemodSet());

    EXPECT_EQ(samples::utc(2026, 11, 23, 8, 30, 0, 125), entry.GetDetection().GetStartTime());
    EXPECT_EQ(samples::utc(2026, 11, 23, 8, 31, 2, 7), entry.GetDetection().GetStopTime());
    EXPECT_TRUE(entry.IsResultListSet());
    EXPECT_EQ(87, entry.GetResultList().GetConfidence());
    EXPECT_FALSE(entry.GetResultList().IsReasonSet());

    const Demodulator_Settings &demodulator = demodulatorOf(entry);
    EXPECT_TRUE(demodulator.IsFrequencyOffsetSet());
    EXPECT_EQ(0.0, demodulator.GetFrequencyOffset());
    EXPECT_EQ(QStringLiteral("AGC=fast;Squelch=-100"), demodulator.GetParameters());
    EXPECT_EQ((QVector<QString>{QStringLiteral("pager"), QStringLiteral("sds")}), demodulator.GetDecoder().GetValue());

    EXPECT_FALSE(entry.IsProfile_DataSet());
    EXPECT_FALSE(entry.IsDF_SettingsSet());
    EXPECT_TRUE(entry.GetStation().isEmpty());
    EXPECT_NO_THROW(entry.Check());
}

TEST_F(DetectionConversion, BothCoordinatesGiveOneLocationResultWithOneStation)
{
    const FrequencyStoreEntry entry = convertedEntry(fullResult(QStringLiteral("FSK2")));
    ASSERT_TRUE(entry.IsLocationSet());
    const FrequencyStoreEntryLocation &location = entry.GetLocation();
    EXPECT_TRUE(location.GetStation().isEmpty());
    ASSERT_EQ(1, location.GetLocationResult().size());
    const LocationResult &located = location.GetLocationResult().at(0);
    EXPECT_EQ(samples::utc(2026, 11, 23, 8, 30, 0, 125), located.GetTimeStamp());
    EXPECT_EQ(12500.5, located.GetDFBandwidth());
    ASSERT_TRUE(located.IsLocationSet());
    EXPECT_EQ(-180.0, located.GetLocation().GetLongitude());
    EXPECT_EQ(90.0, located.GetLocation().GetLatitude());
    EXPECT_EQ(samples::frequency(), located.GetDetail().GetFrequency());
    EXPECT_FALSE(located.IsPlotSet());

    ASSERT_EQ(1, located.GetStation().size());
    const Station &station = located.GetStation().at(0);
    EXPECT_FALSE(station.IsLongitudeSet());
    EXPECT_FALSE(station.IsStationIDSet());
    const DFData &bearing = station.GetDFData();
    EXPECT_EQ(88.25, bearing.GetQuality());
    EXPECT_EQ(samples::frequency(), bearing.GetFrequency());
    EXPECT_EQ(271.5, bearing.GetAzimuth());
    EXPECT_EQ(-73.5, bearing.GetLevel());
    EXPECT_FALSE(bearing.IsDetailSet());
}

TEST_F(DetectionConversion, ALongitudeWithoutLatitudeGivesNoLocationAtAll)
{
    DetectionResult r = fullResult(QStringLiteral("PSK2A"));
    r.ResetLatitude();
    FrequencyStoreEntry entry = convertedEntry(r);
    EXPECT_FALSE(entry.IsLocationSet());
    EXPECT_TRUE(entry.GetStation().isEmpty());

    r = fullResult(QStringLiteral("PSK2A"));
    r.ResetLongitude();
    entry = convertedEntry(r);
    EXPECT_FALSE(entry.IsLocationSet());
}

TEST_F(DetectionConversion, AnEmptyOrUnsetTypeGivesTheEntryTypeA)
{
    DetectionResult empty = modulated(QStringLiteral("ASK2"));
    empty.SetType(QLatin1String(""));
    EXPECT_EQ(QStringLiteral("a"), convertedEntry(empty).GetType());

    DetectionResult unset = minimalResult(QStringLiteral("u"));
    unset.ResetType();
    EXPECT_EQ(QStringLiteral("a"), convertedEntry(unset).GetType());

    DetectionResult blank = modulated(QStringLiteral("ASK2"));
    blank.SetType(QStringLiteral(" "));
    EXPECT_EQ(QStringLiteral(" "), convertedEntry(blank).GetType());
}

TEST_F(DetectionConversion, ADecoderTextWithTwoCommasInARowGivesNoEmptyDecoder)
{
    DetectionResult r = modulated(QStringLiteral("FSK2"));
    r.SetDecoder(QStringLiteral(",ACARS,,SELCAL,"));
    FrequencyStoreEntry entry = convertedEntry(r);
    EXPECT_EQ((QVector<QString>{QStringLiteral("ACARS"), QStringLiteral("SELCAL")}),
              demodulatorOf(entry).GetDecoder().GetValue());

    // Nothing but commas, or an empty text: no Decoder at all.
    for (const char *text : {",,", ""}) {
        r.SetDecoder(QLatin1String(text));
        entry = convertedEntry(r);
        EXPECT_FALSE(demodulatorOf(entry).IsDecoderSet()) << text;
    }
    // A blank is a decoder name, as it stands.
    r.SetDecoder(QStringLiteral(" ,x"));
    entry = convertedEntry(r);
    EXPECT_EQ((QVector<QString>{QStringLiteral(" "), QStringLiteral("x")}), demodulatorOf(entry).GetDecoder().GetValue());
}

TEST_F(DetectionConversion, AnEmptyRawParameterTextLeavesParametersUnset)
{
    DetectionResult r = modulated(QStringLiteral("MFSK2"));
    r.SetDemodulatorRawParameters(QLatin1String(""));
    EXPECT_FALSE(demodulatorOf(convertedEntry(r)).IsParametersSet());
    r.ResetDemodulatorRawParameters();
    EXPECT_FALSE(demodulatorOf(convertedEntry(r)).IsParametersSet());
}

TEST_F(DetectionConversion, UnsetNumbersAndTimesArriveAsTheResultHoldsThemWithTheirPresenceBits)
{
    // Frequency, the bandwidth, Level, StartTime and Confidence are copied
    // whether set or not; StopTime only when set.
    const DetectionResult bare = minimalResult(QStringLiteral("bare"));
    const FrequencyStoreEntry entry = convertedEntry(bare);
    EXPECT_TRUE(entry.GetFFM_Settings().IsLevelSet());
    EXPECT_EQ(0.0, bare.GetLevel());
    EXPECT_EQ(bare.GetLevel(), entry.GetFFM_Settings().GetLevel());
    EXPECT_TRUE(entry.GetDetection().IsStartTimeSet());
    EXPECT_FALSE(entry.GetDetection().GetStartTime().isValid());
    EXPECT_FALSE(entry.GetDetection().IsStopTimeSet());
    EXPECT_TRUE(entry.GetResultList().IsConfidenceSet());
    EXPECT_EQ(0, bare.GetConfidence());
    EXPECT_EQ(bare.GetConfidence(), entry.GetResultList().GetConfidence());
    EXPECT_FALSE(entry.IsLocationSet());
}

TEST_F(DetectionConversion, ReceiverSettingsTextIsReadFirstAndTheResultsNumbersWin)
{
    DetectionResult r = modulated(QStringLiteral("ASK2"));
    r.SetFFMSettingsWithAnalogDemod(QStringLiteral(
        "<FFM_Settings><Frequency>1.00</Frequency><IFBandwidth>2.00</IFBandwidth><IFStep>25.00</IFStep>"
        "<AnalogDemod>USB</AnalogDemod></FFM_Settings>"));
    const FrequencyStoreEntry entry = convertedEntry(r);
    const FFM_Settings &receiver = entry.GetFFM_Settings();
    EXPECT_EQ(FFM_Settings::AnalogDemod_USB, receiver.GetAnalogDemod());
    EXPECT_EQ(25.0, receiver.GetIFStep());
    EXPECT_EQ(7000000.0, receiver.GetFrequency().GetValue());
    EXPECT_EQ(3000.0, receiver.GetIFBandwidth().GetValue());
    EXPECT_EQ(-90.25, receiver.GetLevel());
    EXPECT_TRUE(otherTexts().isEmpty());
}

TEST_F(DetectionConversion, AMalformedReceiverSettingsTextKeepsGoingWithTheSettingsResetAndFilledFromTheResult)
{
    const FFM_Settings expected = [] {
        FFM_Settings s;
        s.SetFrequency(samples::valueRecord<Frequency>(7000000.0));
        s.SetIFBandwidth(samples::valueRecord<IFBandwidth>(3000.0));
        s.SetLevel(-90.25);
        return s;
    }();

    // Not XML at all, or XML of something else: the reader answers false,
    // no message, nothing traced.
    for (const char *text : {"<FFM_Settings><IFStep>25.00</Step></FFM_Settings>", "<FFM_Settings><IFStep>25.00",
                             "FM", "<DF_Settings><DFStep>1</DFStep></DF_Settings>"}) {
        lines.clear();
        DetectionResult r = modulated(QStringLiteral("PSK4B"));
        r.SetFFMSettingsWithAnalogDemod(QLatin1String(text));
        const FrequencyStoreEntry entry = convertedEntry(r);
        EXPECT_EQ(expected, entry.GetFFM_Settings()) << text;
        EXPECT_EQ(Demodulator_Settings::Mode_PSK, demodulatorOf(entry).GetMode()) << text;
        EXPECT_TRUE(otherTexts().isEmpty()) << text << ": " << otherTexts().join(QLatin1Char('|')).toStdString();
    }

    // Well-formed, but the record refuses it: the message is traced, alone.
    DetectionResult r = modulated(QStringLiteral("PSK4B"));
    r.SetFFMSettingsWithAnalogDemod(
        QStringLiteral("<FFM_Settings><IFStep>25.00</IFStep><AnalogDemod>NOSUCH</AnalogDemod></FFM_Settings>"));
    lines.clear();
    const FrequencyStoreEntry entry = convertedEntry(r);
    EXPECT_EQ(expected, entry.GetFFM_Settings());
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(refusedLeadingEntry, lines[0].text);
    EXPECT_EQ(QStringLiteral("enum is not valid (classname=FFM_Settings,membername=m_analogDemod)"), lines[1].text);
    EXPECT_EQ(helperSource, lines[1].file);
}

TEST_F(DetectionConversion, AMalformedReceiverSettingsTextOfAResultWithoutModulationIsTracedWithItsPrefix)
{
    DetectionResult r = minimalResult(QStringLiteral("plain"));
    r.SetLevel(-90.25);
    r.SetFFMSettingsWithAnalogDemod(QStringLiteral("<FFM_Settings><AnalogDemod>AM</AnalogDemod><IFStep>x</IFStep>"
                                                   "<BandwidthMode>Automatic</BandwidthMode></FFM_Settings>"));
    const FrequencyStoreEntry entry = convertedEntry(r);
    ASSERT_EQ(1, otherTexts().size());
    EXPECT_EQ(QStringLiteral("InitWithoutDemodulator : enum is not valid (classname=FFM_Settings,membername=m_bandwidthMode)"),
              otherTexts().at(0));
    // What the text had set before the failure is gone too.
    EXPECT_FALSE(entry.GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_EQ(QStringLiteral("plain"), entry.GetID());
    EXPECT_EQ(7000000.0, entry.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(3000.0, entry.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_EQ(-90.25, entry.GetFFM_Settings().GetLevel());
}

// --- the trace ---------------------------------------------------------------------------------

TEST_F(DetectionConversion, TraceLinesCarryTheHelpersSourcePathAndTheLineOfTheCall)
{
    DetectionResult common = modulated(QStringLiteral("ASK2"));
    common.SetFFMSettingsWithAnalogDemod(QStringLiteral("<FFM_Settings><AnalogDemod>NOSUCH</AnalogDemod></FFM_Settings>"));
    DetectionResult plain = minimalResult(QStringLiteral("plain"));
    plain.SetFFMSettingsWithAnalogDemod(QStringLiteral("<FFM_Settings><AnalogDemod>NOSUCH</AnalogDemod></FFM_Settings>"));
    DetectionResultList results = resultList({common, plain});
    FrequencyStoreList list;
    DetectionResultHelper helper(results, list);
    ASSERT_EQ(3u, lines.size());
    EXPECT_EQ(refusedLeadingEntry, lines[0].text);
    EXPECT_EQ(QStringLiteral("enum is not valid (classname=FFM_Settings,membername=m_analogDemod)"), lines[1].text);
    EXPECT_EQ(QStringLiteral("InitWithoutDemodulator : enum is not valid (classname=FFM_Settings,membername=m_analogDemod)"),
              lines[2].text);

    QFile source(QStringLiteral(MORVANE_TEST_DATA "/../../frequencystore/detectionresulthelper.cpp"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly | QIODevice::Text));
    const QList<QByteArray> sourceLines = source.readAll().split('\n');
    const char *const words[] = {"DetectionResultHelper::Init ", "DETECTIONRESULT_TRACE(*message)",
                                 "InitWithoutDemodulator : "};
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(helperSource, lines[i].file);
        ASSERT_GT(lines[i].line, 0);
        ASSERT_LE(int(lines[i].line), sourceLines.size());
        const QByteArray code = sourceLines.at(lines[i].line - 1);
        EXPECT_TRUE(code.contains("DETECTIONRESULT_TRACE(")) << i << ": " << code.constData();
        EXPECT_TRUE(code.contains(words[i])) << i << ": " << code.constData();
    }
}

TEST_F(DetectionConversion, NothingIsTracedWithBit0x20Clear)
{
    ErrorHandler::Instance()->SetTraceMask(0xffffffffu & ~ErrorHandler::TraceErrors);
    DetectionResult r = modulated(QStringLiteral("ASK2"));
    r.SetFFMSettingsWithAnalogDemod(QStringLiteral("<FFM_Settings><AnalogDemod>NOSUCH</AnalogDemod></FFM_Settings>"));
    DetectionResultList results = resultList({r});
    FrequencyStoreList list;
    DetectionResultHelper helper(results, list);
    EXPECT_EQ(1, entries(list).size());
    EXPECT_TRUE(lines.empty());
}

// --- the CSV text ------------------------------------------------------------------------------

TEST_F(DetectionResultHelperCSV, AFullAndAMinimalResultByteForByte)
{
    DetectionResult minimal = minimalResult(QStringLiteral("det-2"), 12345.678, 0.004);
    DetectionResultList results = resultList({fullResult(QStringLiteral("FSK2")), minimal});
    EXPECT_EQ(header
                  + QStringLiteral("det-full;145525000.00;12500.50;-73.50;2026-11-23T08:30:00,125Z;"
                                   "2026-11-23T08:31:02,007Z;87;FSK2;POCSAG;1200.00;850.00;pager,,sds;271.50;88.25;"
                                   "-180.000000;90.000000\n")
                  + QStringLiteral("det-2;12345.68;0.00;---;;---;---;---;---;---;---;---;---;---;---;\n"),
              csvOf(results));
}

TEST_F(DetectionResultHelperCSV, ARowWithoutLatitudeEndsAfterLongitudeAndKeepsTheHeadersSixteenFields)
{
    DetectionResult r = fullResult(QStringLiteral("MORSE"));
    r.ResetLatitude();
    r.SetLongitude(16.371234567);
    DetectionResultList results = resultList({r});
    const QString text = csvOf(results);
    const QStringList rows = text.split(QLatin1Char('\n'));
    ASSERT_EQ(3, rows.size());
    EXPECT_TRUE(rows.at(1).endsWith(QStringLiteral(";88.25;16.371235;"))) << rows.at(1).toStdString();
    EXPECT_EQ(16, rows.at(0).split(QLatin1Char(';')).size());
    EXPECT_EQ(16, rows.at(1).split(QLatin1Char(';')).size());
    EXPECT_EQ(QString(), rows.at(2));

    // Latitude without Longitude: "---" for Longitude, the number last.
    r = fullResult(QStringLiteral("MORSE"));
    r.ResetLongitude();
    r.SetLatitude(-0.5);
    results = resultList({r});
    EXPECT_TRUE(csvOf(results).endsWith(QStringLiteral(";88.25;---;-0.500000\n")));
}

TEST_F(DetectionResultHelperCSV, SetButEmptyTextsAreEmptyCellsAndOnlyUnsetMembersArePlaceholders)
{
    DetectionResult r = minimalResult(QLatin1String(""), 1.0, 2.0);
    r.SetModulation(QLatin1String(""));
    r.SetTransmissionSystem(QLatin1String(""));
    r.SetDecoder(QLatin1String(""));
    r.SetConfidence(0);
    r.SetLevel(0.0);
    r.SetAzimuth(-0.001);
    DetectionResultList results = resultList({r});
    EXPECT_EQ(header + QStringLiteral(";1.00;2.00;0.00;;---;0;;;---;---;;-0.00;---;---;\n"), csvOf(results));
}

TEST_F(DetectionResultHelperCSV, IDFrequencyBandwidthAndStartTimeAreWrittenWithoutATest)
{
    // A result the list would not take through AppendDetectionResult: no ID,
    // no Type, no Frequency, no Bandwidth.
    DetectionResult r;
    r.SetLevel(1.0);
    r.SetModulation(QStringLiteral("X"));
    DetectionResultList results = resultList();
    results.GetDetectionResult().append(r);
    EXPECT_EQ(header + QStringLiteral(";0.00;0.00;1.00;;---;---;X;---;---;---;---;---;---;---;\n"), csvOf(results));
}

TEST_F(DetectionResultHelperCSV, TheTextNeedsNeitherTheConversionNorTheStoreList)
{
    DetectionResultList results = resultList({fullResult(QStringLiteral("ASK2")), minimalResult(QStringLiteral("b"))});
    FrequencyStoreList first;
    FrequencyStoreList second;
    second.SetValidate(false);
    const DetectionResultHelper a(results, first);
    const DetectionResultHelper b(results, second);
    EXPECT_NE(first, second);
    EXPECT_EQ(a.GetCSVString(), b.GetCSVString());
    // The rows follow the results: a result added later shows.
    results.AppendDetectionResult(minimalResult(QStringLiteral("late")));
    EXPECT_TRUE(a.GetCSVString().endsWith(QStringLiteral("\nlate;7000000.00;3000.00;---;;---;---;---;---;---;---;---;---;---;---;\n")));
}

// --- FileHandling ------------------------------------------------------------------------------

TEST_F(FileHandlingDetectionResults, CSVExportWritesTheResultsToARealFile)
{
    DetectionResultList results = resultList({fullResult(QStringLiteral("PSK8B")), minimalResult(QStringLiteral("m"))});
    const QString file = path("results.csv");
    EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(true, file, results));
    const QByteArray expected = header.toUtf8()
        + "det-full;145525000.00;12500.50;-73.50;2026-11-23T08:30:00,125Z;2026-11-23T08:31:02,007Z;87;PSK8B;POCSAG;"
          "1200.00;850.00;pager,,sds;271.50;88.25;-180.000000;90.000000\n"
          "m;7000000.00;3000.00;---;;---;---;---;---;---;---;---;---;---;---;\n";
    EXPECT_EQ(expected, read(file));
    // The conversion ran (the leading entry's refusal shows), the writing
    // failed nowhere.
    EXPECT_EQ(QStringList{refusedLeadingEntry}, texts());
    EXPECT_EQ(QStringList{QStringLiteral("results.csv")}, folder());
}

TEST_F(FileHandlingDetectionResults, CSVExportOfAnEmptyListWritesTheHeaderAlone)
{
    DetectionResultList results = resultList();
    EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("empty.csv"), results));
    EXPECT_EQ(header.toUtf8(), read(path("empty.csv")));
}

TEST_F(FileHandlingDetectionResults, XmlExportWritesTheConvertedStoreListOnce)
{
    DetectionResultList results = resultList({fullResult(QStringLiteral("PSK4A")), modulated(QStringLiteral("MFSK2")),
                                              modulated(QStringLiteral("RTTY"))});
    const QString file = path("results.xml");
    EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(false, file, results));
    // One conversion: one refusal of the leading entry, one entry per result.
    EXPECT_EQ(QStringList{refusedLeadingEntry}, texts());

    FrequencyStoreList back;
    ASSERT_TRUE(FileHandling().ImportXml(file, back));
    ASSERT_EQ(3, entries(back).size());
    EXPECT_EQ(FrequencyStoreList::Usage_Target, back.GetUsage());
    EXPECT_EQ(Demodulator_Settings::Mode_PSK, demodulatorOf(entries(back).at(0)).GetMode());
    EXPECT_EQ(Demodulator_Settings::Mode_MFSK, demodulatorOf(entries(back).at(1)).GetMode());
    EXPECT_EQ(QStringLiteral("RTTY"), demodulatorOf(entries(back).at(2)).GetTransmissionSystem().GetMode());
    EXPECT_TRUE(entries(back).at(0).IsLocationSet());

    // The same bytes as the store list converted here and saved.
    lines.clear();
    FrequencyStoreList direct;
    DetectionResultHelper helper(results, direct);
    ASSERT_TRUE(direct.SaveXml(path("direct.xml")));
    EXPECT_EQ(read(path("direct.xml")), read(file));
    EXPECT_FALSE(read(file).contains("DetectionResult"));
}

TEST_F(FileHandlingDetectionResults, XmlExportOfAConvertedListThatFailsItsCheckReturnsFalseWithTheTrace)
{
    // ASK without a Baudrate gives a variant without data, which the Check of
    // the written list refuses.
    DetectionResult r = modulated(QStringLiteral("ASK2"));
    r.ResetBaudrate();
    DetectionResultList results = resultList({r});
    const QString file = path("results.xml");
    bool result = true;
    EXPECT_NO_THROW(result = FileHandling().ExportFrequencyStoreList(false, file, results));
    EXPECT_FALSE(result);
    ASSERT_EQ(2, texts().size());
    EXPECT_EQ(refusedLeadingEntry, texts().at(0));
    EXPECT_TRUE(texts().at(1).startsWith(MorvaneTest::xmlError)) << texts().at(1).toStdString();
    EXPECT_TRUE(texts().at(1).contains(QStringLiteral("m_aSK_Settings"))) << texts().at(1).toStdString();
    EXPECT_FALSE(QFileInfo::exists(file));
}

TEST_F(FileHandlingDetectionResults, CSVExportToAnUnwritablePathReturnsFalseWithErrorWritingFile)
{
    DetectionResultList results = resultList({minimalResult(QStringLiteral("a"))});
    const QString file = path("no-such-folder/results.csv");
    bool result = true;
    EXPECT_NO_THROW(result = FileHandling().ExportFrequencyStoreList(true, file, results));
    EXPECT_FALSE(result);
    EXPECT_EQ((QStringList{refusedLeadingEntry, QStringLiteral("Error writing file ") + file
                                                    + QStringLiteral(". OrbelinException: Can't open file for writing: '")
                                                    + file + QLatin1Char('\'')}),
              texts());
    EXPECT_EQ(QStringLiteral("frequencystore/filehandling"), lines.back().file);

    // A folder in the file's place.
    lines.clear();
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("taken.csv")));
    EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, path("taken.csv"), results));
    ASSERT_EQ(2, texts().size());
    EXPECT_TRUE(texts().at(1).startsWith(QStringLiteral("Error writing file ") + path("taken.csv")));
    EXPECT_TRUE(QFileInfo(path("taken.csv")).isDir());
}

TEST_F(FileHandlingDetectionResults, XmlExportToAnUnwritablePathReturnsFalseWithTheXmlTrace)
{
    DetectionResultList results = resultList({modulated(QStringLiteral("ASK2"))});
    const QString file = path("no-such-folder/results.xml");
    EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(false, file, results));
    EXPECT_EQ((QStringList{refusedLeadingEntry,
                           MorvaneTest::xmlError + QStringLiteral("Can't write file: '") + file + QLatin1Char('\'')}),
              texts());
}

TEST_F(FileHandlingDetectionResults, AnExceptionOfTheConversionReachesTheCallerInBothForms)
{
    DetectionResult noFrequency = minimalResult(QStringLiteral("broken"));
    noFrequency.ResetFrequency();
    DetectionResultList results = resultList({noFrequency});
    for (const bool csv : {true, false}) {
        lines.clear();
        const QString file = path(csv ? "results.csv" : "results.xml");
        EXPECT_EQ(QStringLiteral("FrequencyStoreList: Tried to append not completely defined or invalid item "
                                 "FrequencyStoreEntry."),
                  messageOf<ORBELIN::IncompleteDefinitionException>(
                      [&] { FileHandling().ExportFrequencyStoreList(csv, file, results); }))
            << csv;
        EXPECT_FALSE(QFileInfo::exists(file)) << csv;
        // Only the conversion's own trace: nothing of a failed writing.
        EXPECT_EQ(QStringList{refusedLeadingEntry}, texts()) << csv;
    }

    // An unset Usage fails at the converted list, also uncaught.
    results = resultList({minimalResult(QStringLiteral("a"))});
    results.ResetUsage();
    EXPECT_EQ(QStringLiteral("enum is not valid (classname=FrequencyStoreList,membername=m_usage)"),
              messageOf<ORBELIN::OutOfRangeException>(
                  [&] { FileHandling().ExportFrequencyStoreList(true, path("usage.csv"), results); }));
    EXPECT_TRUE(folder().isEmpty());
}

TEST_F(FileHandlingDetectionResults, CSVExportOfAStoreListAsDetectionResultConvertsTheHelpersEmptyResults)
{
    // The list type DetectionResult exports the detection results of the
    // helper, and ExportFrequencyStoreList gives the helper none: their unset
    // Usage fails at the store list, which ExportCSV reports.
    FrequencyStoreList list;
    FrequencyStoreEntry e;
    e.SetType(QStringLiteral("Fixed"));
    e.GetFFM_Settings().GetFrequency().SetValue(1.0);
    e.GetFFM_Settings().GetIFBandwidth().SetValue(2.0);
    list.AppendFrequencyStoreEntry(e);
    const QString file = path("store.csv");
    EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, file, list, MorvaneTest::DetectionResult));
    EXPECT_EQ(QStringList{MorvaneTest::exportError
                          + QStringLiteral("enum is not valid (classname=FrequencyStoreList,membername=m_usage)")},
              texts());
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_EQ(1, entries(list).size());
}
