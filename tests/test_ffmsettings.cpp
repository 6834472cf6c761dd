// Tests of the fixed-frequency settings, their panorama-scan part and their
// detail record: enumerations, built-in defaults, versioning, the text forms
// and the binary forms.

#include "recordtestsupport.h"
#include "tags.h"

#include <limits>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::InvalidXmlException;
using ORBELIN::OutOfRangeException;

namespace {

FFM_Settings minimalFFM()
{
    FFM_Settings s;
    s.SetFrequency(samples::valueRecord<Frequency>(100.0));
    s.SetIFBandwidth(samples::valueRecord<IFBandwidth>(9.0));
    return s;
}

FFM_SettingsDetail fullDetail()
{
    FFM_SettingsDetail d;
    d.SetBFOFrequency(1.25);
    d.SetGain_Ctrl("MGC");
    d.SetMGCValue(-12.5);
    d.SetAGCDecay(0.75);
    d.SetAttenuation(FFM_SettingsDetail::Attenuation_AUTO);
    d.SetAttenuationValue(10.5);
    d.SetAttenuationHoldTime(3.25);
    d.SetAFC(FFM_SettingsDetail::AFC_OFF);
    d.SetActive(false);
    d.SetAlarm(true);
    d.SetChannelNo(12);
    d.SetSquelchState(FFM_SettingsDetail::SquelchState_OFF);
    d.SetSquelchValue(-3);
    d.SetAnalogFrequencyOffset(-0.5);
    d.SetAnalogBandwidth(12000.0);
    d.SetGainControlTime(FFM_SettingsDetail::GainControlTime_Fast);
    d.SetPreselection(FFM_SettingsDetail::Preselection_LOW_NOISE);
    d.SetLevelDetector(FFM_SettingsDetail::LevelDetector_PEAK);
    d.SetMeasuremetTime(samples::utc(2019, 12, 31, 23, 0, 1, 2));
    d.SetInvertedFMState("");
    d.SetInverseFrequency(455.25);
    d.SetAntennaPolarisation(FFM_SettingsDetail::AntennaPolarisation_HORIZONTAL);
    d.SetAntPreAmp(FFM_SettingsDetail::AntPreAmp_OFF);
    return d;
}

QString detailDocument(const QString &versionAttribute, const QString &content)
{
    return QStringLiteral("<Detail%1>%2</Detail>").arg(versionAttribute, content);
}

QString ffmDocument(const QString &versionAttribute, const QString &content)
{
    return QStringLiteral("<FFM_Settings%1><Frequency>100.00</Frequency><IFBandwidth>9.00</IFBandwidth>%2</FFM_Settings>")
        .arg(versionAttribute, content);
}

} // namespace

// --- enumerations -------------------------------------------------------------------------

TEST(FFMSettingsEnum, BandwidthMode)
{
    checkEnumeration<FFM_Settings, FFM_Settings::BandwidthMode>(
        {"Manual", "Coupled"}, &FFM_Settings::GetBandwidthModes, &FFM_Settings::GetGUIBandwidthModes,
        &FFM_Settings::BandwidthModeToName, &FFM_Settings::NameToBandwidthMode, &FFM_Settings::IsValidBandwidthMode);
}

TEST(FFMSettingsEnum, AnalogDemod)
{
    checkEnumeration<FFM_Settings, FFM_Settings::AnalogDemod>(
        {"AM",  "FM",  "CW",  "PULSE", "LSB", "USB", "ISB", "TV",  "PM",  "IQ",   "LOG",  "A1",  "A1A", "A3E", "B7B",
         "B8E", "F1B", "F1C", "F3C",   "F3E", "F7B", "J3E", "J7B", "FSK", "AFSK", "FAX1", "FAX2", "WBP", "UNKNOWN"},
        &FFM_Settings::GetAnalogDemods, &FFM_Settings::GetGUIAnalogDemods, &FFM_Settings::AnalogDemodToName,
        &FFM_Settings::NameToAnalogDemod, &FFM_Settings::IsValidAnalogDemod);
}

TEST(FFMSettingsEnum, UnknownDemodulationIsAValidValue)
{
    FFM_Settings s;
    EXPECT_EQ(28, int(s.NameToAnalogDemod("UNKNOWN")));
    EXPECT_NE(s.GetInvalidAnalogDemod(), s.NameToAnalogDemod("UNKNOWN"));
    EXPECT_TRUE(s.IsValidAnalogDemod(s.NameToAnalogDemod("UNKNOWN")));
    s.SetAnalogDemod(s.NameToAnalogDemod("UNKNOWN"));
    EXPECT_EQ(FFM_Settings::AnalogDemod_UNKNOWN, s.GetAnalogDemod());
}

TEST(FFMSettingsEnum, TunerMode)
{
    checkEnumeration<FFM_Settings, FFM_Settings::TunerMode>(
        {"FixedFrequency", "PanoramaScan"}, &FFM_Settings::GetTunerModes, &FFM_Settings::GetGUITunerModes,
        &FFM_Settings::TunerModeToName, &FFM_Settings::NameToTunerMode, &FFM_Settings::IsValidTunerMode);
}

TEST(FFMSettingsEnum, DetailEnumerations)
{
    using D = FFM_SettingsDetail;
    checkEnumeration<D, D::Attenuation>({"OFF", "ON", "AUTO", "MANUAL"}, &D::GetAttenuations, &D::GetGUIAttenuations,
                                        &D::AttenuationToName, &D::NameToAttenuation, &D::IsValidAttenuation);
    checkEnumeration<D, D::AFC>({"OFF", "ON"}, &D::GetAFCs, &D::GetGUIAFCs, &D::AFCToName, &D::NameToAFC,
                                &D::IsValidAFC);
    checkEnumeration<D, D::SquelchState>({"OFF", "ON"}, &D::GetSquelchStates, &D::GetGUISquelchStates,
                                         &D::SquelchStateToName, &D::NameToSquelchState, &D::IsValidSquelchState);
    checkEnumeration<D, D::GainControlTime>({"Default", "Fast", "Slow"}, &D::GetGainControlTimes,
                                            &D::GetGUIGainControlTimes, &D::GainControlTimeToName,
                                            &D::NameToGainControlTime, &D::IsValidGainControlTime);
    checkEnumeration<D, D::Preselection>({"LOW NOISE", "NORMAL", "LOW DISTORT"}, &D::GetPreselections,
                                         &D::GetGUIPreselections, &D::PreselectionToName, &D::NameToPreselection,
                                         &D::IsValidPreselection);
    checkEnumeration<D, D::LevelDetector>({"AVG", "PEAK", "FAST", "RMS", "RDS"}, &D::GetLevelDetectors,
                                          &D::GetGUILevelDetectors, &D::LevelDetectorToName, &D::NameToLevelDetector,
                                          &D::IsValidLevelDetector);
    checkEnumeration<D, D::AntennaPolarisation>({"VERTICAL", "HORIZONTAL", "LEFT", "RIGHT"},
                                                &D::GetAntennaPolarisations, &D::GetGUIAntennaPolarisations,
                                                &D::AntennaPolarisationToName, &D::NameToAntennaPolarisation,
                                                &D::IsValidAntennaPolarisation);
    checkEnumeration<D, D::AntPreAmp>({"OFF", "ON"}, &D::GetAntPreAmps, &D::GetGUIAntPreAmps, &D::AntPreAmpToName,
                                      &D::NameToAntPreAmp, &D::IsValidAntPreAmp);
}

TEST(FFMSettingsEnum, NamesAreCaseSensitive)
{
    FFM_SettingsDetail d;
    EXPECT_EQ(-1, int(d.NameToPreselection("low noise")));
    EXPECT_EQ(0, int(d.NameToPreselection("LOW NOISE")));
    FFM_Settings s;
    EXPECT_EQ(-1, int(s.NameToTunerMode("fixedfrequency")));
    s.SetInvalidTunerMode(FFM_Settings::TunerMode(33));
    EXPECT_EQ(33, int(s.NameToTunerMode("fixedfrequency")));
}

TEST(FFMSettingsEnum, GuiListsGoThroughTranslation)
{
    ScopedMarkingTranslator translator;
    ASSERT_TRUE(translator.installed());
    const QStringList gui = FFM_Settings::GetGUITunerModes();
    ASSERT_EQ(2, gui.size());
    EXPECT_NE(QString("FixedFrequency"), gui.at(0));
    EXPECT_TRUE(gui.at(0).endsWith("|FixedFrequency"));
    EXPECT_TRUE(gui.at(1).endsWith("|PanoramaScan"));
    const QStringList presel = FFM_SettingsDetail::GetGUIPreselections();
    ASSERT_EQ(3, presel.size());
    EXPECT_TRUE(presel.at(2).endsWith("|LOW DISTORT"));
    EXPECT_EQ((QStringList{"FixedFrequency", "PanoramaScan"}), FFM_Settings::GetTunerModes());
    EXPECT_TRUE(FFM_SettingsDetail::tr("ON").endsWith("|ON"));
}

TEST(FFMSettingsEnum, InvalidValueMessages)
{
    FFM_Settings s;
    EXPECT_THROW_MESSAGE(s.SetTunerMode(FFM_Settings::TunerMode(2)), OutOfRangeException,
                         "enum is not valid (classname=FFM_Settings,membername=m_tunerMode)");
    EXPECT_THROW_MESSAGE(s.SetBandwidthMode(FFM_Settings::BandwidthMode(-1)), OutOfRangeException,
                         "enum is not valid (classname=FFM_Settings,membername=m_bandwidthMode)");
    EXPECT_THROW_MESSAGE(s.SetAnalogDemod(FFM_Settings::AnalogDemod(29)), OutOfRangeException,
                         "enum is not valid (classname=FFM_Settings,membername=m_analogDemod)");
    EXPECT_FALSE(s.IsTunerModeSet());
    EXPECT_FALSE(s.IsBandwidthModeSet());
    EXPECT_FALSE(s.IsAnalogDemodSet());
    FFM_SettingsDetail d;
    EXPECT_THROW_MESSAGE(d.SetAFC(FFM_SettingsDetail::AFC(2)), OutOfRangeException,
                         "enum is not valid (classname=FFM_SettingsDetail,membername=m_aFC)");
    EXPECT_THROW_MESSAGE(d.SetAntPreAmp(FFM_SettingsDetail::AntPreAmp(-1)), OutOfRangeException,
                         "enum is not valid (classname=FFM_SettingsDetail,membername=m_antPreAmp)");
    EXPECT_THROW_MESSAGE(d.SetLevelDetector(FFM_SettingsDetail::LevelDetector(5)), OutOfRangeException,
                         "enum is not valid (classname=FFM_SettingsDetail,membername=m_levelDetector)");
}

TEST(FFMSettingsEnum, AttenuationAcceptsZeroToThree)
{
    FFM_SettingsDetail d;
    for (int v = 0; v <= 3; ++v) {
        d.SetAttenuation(FFM_SettingsDetail::Attenuation(v));
        EXPECT_EQ(v, int(d.GetAttenuation()));
    }
    for (int v : {4, -1}) {
        EXPECT_THROW_MESSAGE(d.SetAttenuation(FFM_SettingsDetail::Attenuation(v)), OutOfRangeException,
                             "enum is not valid (classname=FFM_SettingsDetail,membername=m_attenuation)");
        EXPECT_EQ(3, int(d.GetAttenuation()));
    }
    d.SetValidate(false);
    d.SetAttenuation(FFM_SettingsDetail::Attenuation(4));
    EXPECT_EQ(4, int(d.GetAttenuation()));
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set Attenuation properly.");
}

// --- defaults -------------------------------------------------------------------------------

TEST(FFMSettingsDefaults, BuiltInDefaults)
{
    FFM_Settings s;
    EXPECT_FALSE(s.GetDefaultIFStepAuto());
    EXPECT_EQ(FFM_Settings::TunerMode_FixedFrequency, s.GetDefaultTunerMode());
    // Defaults are not values: nothing is set yet.
    EXPECT_FALSE(s.IsIFStepAutoSet());
    EXPECT_FALSE(s.IsTunerModeSet());
    EXPECT_EQ(FFM_Settings::TunerMode_FixedFrequency, s.GetTunerMode());
    // The other enumerations default to the invalid value.
    EXPECT_EQ(-1, int(s.GetDefaultBandwidthMode()));
    EXPECT_EQ(-1, int(s.GetAnalogDemod()));
}

TEST(FFMSettingsDefaults, ResetToDefaultSetsThem)
{
    FFM_Settings s;
    s.SetIFStepAuto(true);
    s.SetTunerMode(FFM_Settings::TunerMode_PanoramaScan);
    s.SetLevel(3.0);
    s.ResetToDefault();
    EXPECT_TRUE(s.IsIFStepAutoSet());
    EXPECT_FALSE(s.GetIFStepAuto());
    EXPECT_TRUE(s.IsTunerModeSet());
    EXPECT_EQ(FFM_Settings::TunerMode_FixedFrequency, s.GetTunerMode());
    EXPECT_FALSE(s.IsLevelSet());
    EXPECT_FALSE(s.IsBandwidthModeSet());
    // Nested records are reset to their defaults but stay unset.
    const FFM_Settings &view = s;
    EXPECT_FALSE(s.IsPScanSettingsSet());
    EXPECT_TRUE(view.GetPScanSettings().IsFrequencyStepSet());
    EXPECT_FALSE(s.IsPScanSettingsSet());
}

TEST(FFMSettingsDefaults, ResetToDefaultOfAFreshObject)
{
    FFM_Settings s;
    s.ResetToDefault();
    EXPECT_TRUE(s.IsIFStepAutoSet());
    EXPECT_FALSE(s.GetIFStepAuto());
    EXPECT_TRUE(s.IsTunerModeSet());
    EXPECT_EQ(QString("FixedFrequency"), s.GetTunerModeAsString());
}

TEST(FFMSettingsDefaults, PScanSettingsDefaults)
{
    PScanSettings p;
    EXPECT_EQ(0.0, p.GetDefaultStartFrequency());
    EXPECT_EQ(0.0, p.GetDefaultStopFrequency());
    EXPECT_EQ(500.0, p.GetDefaultFrequencyStep());
    EXPECT_FALSE(p.IsFrequencyStepSet());
    EXPECT_EQ(500.0, p.GetFrequencyStep());

    // ResetToDefault sets all three, on a fresh object as on a used one.
    PScanSettings fresh;
    PScanSettings used;
    used.SetFrequencyStep(1.0);
    for (PScanSettings *q : {&fresh, &used}) {
        q->ResetToDefault();
        EXPECT_TRUE(q->IsStartFrequencySet());
        EXPECT_TRUE(q->IsStopFrequencySet());
        EXPECT_TRUE(q->IsFrequencyStepSet());
        EXPECT_EQ(0.0, q->GetStartFrequency());
        EXPECT_EQ(0.0, q->GetStopFrequency());
        EXPECT_EQ(500.0, q->GetFrequencyStep());
    }
}

TEST(FFMSettingsDefaults, PScanSettingsWritesOnlyWhatIsSet)
{
    PScanSettings p;
    p.SetStopFrequency(108000000.0);
    EXPECT_EQ(QString("<PScanSettings><StopFrequency>108000000.00</StopFrequency></PScanSettings>"), compactXml(p));
    EXPECT_EQ((QVector<quint32>{TagStopFrequency}), tagsOf(bodyOf(p.GetBinaryRepresentationAsQByteArray())));
    p.ResetToDefault();
    EXPECT_EQ(QString("<PScanSettings><StartFrequency>0.00</StartFrequency><StopFrequency>0.00</StopFrequency>"
                      "<FrequencyStep>500.00</FrequencyStep></PScanSettings>"),
              compactXml(p));
    EXPECT_EQ((QVector<quint32>{TagStartFrequency, TagStopFrequency, TagFrequencyStep}),
              tagsOf(bodyOf(p.GetBinaryRepresentationAsQByteArray())));
    EXPECT_NO_THROW(p.Check());
}

TEST(FFMSettingsDefaults, OlderDocumentTakesTheDefaults)
{
    FFM_Settings s;
    ASSERT_TRUE(s.SetXmlString(ffmDocument(" Version=\"1.1\"", "<Level>-80.00</Level><Retired>1</Retired>"), true));
    EXPECT_EQ(QString("1.1"), s.GetInitialVersionLoaded());
    EXPECT_TRUE(s.IsTunerModeSet());
    EXPECT_TRUE(s.IsIFStepAutoSet());
    EXPECT_EQ(-80.0, s.GetLevel());

    FFM_Settings current;
    ASSERT_TRUE(current.SetXmlString(ffmDocument(" Version=\"1.2\"", "<Level>-80.00</Level>"), true));
    EXPECT_FALSE(current.IsTunerModeSet());
    EXPECT_FALSE(current.IsIFStepAutoSet());
    EXPECT_THROW_MESSAGE(current.SetXmlString(ffmDocument(" Version=\"1.2\"", "<Retired>1</Retired>"), true),
                         InvalidXmlException, "Unknown Tag 'Retired' in 'FFM_Settings'.");
}

// --- FFM_Settings: completeness and Check ---------------------------------------------------

TEST(FFMSettingsCheck, VersionIs12)
{
    FFM_Settings s;
    EXPECT_EQ(QString("1.2"), s.GetVersion());
    FFM_SettingsDetail d;
    EXPECT_EQ(QString("1.2"), d.GetVersion());
    EXPECT_TRUE(d.GetInitialVersionLoaded().isEmpty());
    PScanSettings p;
    EXPECT_TRUE(p.GetVersion().isEmpty());
}

TEST(FFMSettingsCheck, MissingFrequencyFailsWriting)
{
    FFM_Settings s;
    s.SetIFBandwidth(samples::valueRecord<IFBandwidth>(9.0));
    EXPECT_FALSE(s.HasData());
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW_MESSAGE(s.GetXml(writer), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'FFM_Settings'.");
    EXPECT_TRUE(text.isEmpty());
}

TEST(FFMSettingsCheck, MissingIFBandwidthFailsWriting)
{
    FFM_Settings s;
    s.SetFrequency(samples::valueRecord<Frequency>(100.0));
    EXPECT_FALSE(s.HasData());
    EXPECT_THROW_MESSAGE(s.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for IFBandwidth are not set properly in 'FFM_Settings'.");
    EXPECT_THROW_MESSAGE(s.GetBinaryRepresentationAsQByteArray(), IncompleteDefinitionException,
                         "Parameters for IFBandwidth are not set properly in 'FFM_Settings'.");
}

TEST(FFMSettingsCheck, CheckTestsMandatoryChildrenWithValidation)
{
    FFM_Settings s;
    s.SetFrequency(samples::valueRecord<Frequency>(1.0));
    EXPECT_THROW_MESSAGE(s.Check(), IncompleteDefinitionException,
                         "Parameters for IFBandwidth are not set properly in 'FFM_Settings'.");
    s.SetValidate(false);
    EXPECT_NO_THROW(s.Check());
    s.SetValidate(true);
    s.SetIFBandwidth(samples::valueRecord<IFBandwidth>(2.0));
    EXPECT_NO_THROW(s.Check());
    // A child that is there is checked itself.
    s.SetValidate(false);
    s.GetFrequency().Reset();
    s.GetFrequency().SetMin(0.5);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Frequency: Please set Value properly.");
}

TEST(FFMSettingsCheck, MandatoryChildrenWrittenFromTheirSlotsWithoutValidation)
{
    FFM_Settings s;
    s.SetValidate(false);
    s.SetLevel(-70.0);
    EXPECT_EQ(QString("<FFM_Settings Version=\"1.2\"><Frequency>0.00</Frequency><IFBandwidth>0.00</IFBandwidth>"
                      "<Level>-70.00</Level></FFM_Settings>"),
              compactXml(s));
}

TEST(FFMSettingsCheck, InvalidEnumerationsFailCheck)
{
    expectCheckNamesSpoiled<FFM_Settings>(minimalFFM(), "FFM_Settings", {
        {"BandwidthMode", [](FFM_Settings &s) { s.SetBandwidthMode(FFM_Settings::BandwidthMode(2)); }},
        {"AnalogDemod", [](FFM_Settings &s) { s.SetAnalogDemod(FFM_Settings::AnalogDemod(-1)); }},
        {"TunerMode", [](FFM_Settings &s) { s.SetTunerMode(FFM_Settings::TunerMode(7)); }},
    });
}

TEST(FFMSettingsCheck, NestedDetailIsChecked)
{
    FFM_Settings s = minimalFFM();
    s.SetValidate(false);
    s.GetDetail().SetGain_Ctrl(QString());
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Detail: Please set Gain_Ctrl properly.");
}

// --- FFM_Settings: forms ----------------------------------------------------------------------

TEST(FFMSettingsForms, XmlTextForms)
{
    FFM_Settings s = minimalFFM();
    s.SetIFStep(12.345);
    s.SetIFStepAuto(false);
    s.SetBandwidthMode(FFM_Settings::BandwidthMode_Manual);
    s.SetAnalogDemod(FFM_Settings::AnalogDemod_J3E);
    s.SetLevel(-95.5);
    s.SetUpperLevel(0.0);
    s.SetTunerMode(FFM_Settings::TunerMode_PanoramaScan);
    EXPECT_EQ(QString("<FFM_Settings Version=\"1.2\"><Frequency>100.00</Frequency><IFBandwidth>9.00</IFBandwidth>"
                      "<IFStep>12.35</IFStep><IFStepAuto>false</IFStepAuto><BandwidthMode>Manual</BandwidthMode>"
                      "<AnalogDemod>J3E</AnalogDemod><Level>-95.50</Level><UpperLevel>0.00</UpperLevel>"
                      "<TunerMode>PanoramaScan</TunerMode></FFM_Settings>"),
              compactXml(s));
}

TEST(FFMSettingsForms, BinaryMemberOrderAndForms)
{
    FFM_Settings s = minimalFFM();
    s.SetPScanSettings(PScanSettings());
    s.GetPScanSettings().SetFrequencyStep(25.0);
    s.SetTunerMode(FFM_Settings::TunerMode_FixedFrequency);
    s.SetDetail(FFM_SettingsDetail());
    s.SetUpperLevel(1.0);
    s.SetLevel(2.0);
    s.SetAnalogDemod(FFM_Settings::AnalogDemod_AM);
    s.SetBandwidthMode(FFM_Settings::BandwidthMode_Coupled);
    s.SetIFStepAuto(true);
    s.SetIFStep(3.0);
    const QByteArray rep = s.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(QByteArray::fromHex("fcf98ea4"), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ((QVector<quint32>{VersionTag, TagFrequency, TagIFBandwidth, TagIFStep, TagIFStepAuto, TagBandwidthMode,
                                TagAnalogDemod, TagLevel, TagUpperLevel, TagFFMDetail, TagTunerMode, TagPScan}),
              tagsOf(body));
    EXPECT_EQ(qstringValue("1.2"), valueOf(body, VersionTag));
    EXPECT_EQ(QByteArray::fromHex("01"), valueOf(body, TagIFStepAuto));
    EXPECT_EQ(utf8Value("3.00"), valueOf(body, TagIFStep));
    EXPECT_EQ(utf8Value("Coupled"), valueOf(body, TagBandwidthMode));
    EXPECT_EQ(utf8Value("FixedFrequency"), valueOf(body, TagTunerMode));
    // The empty detail holds its version alone.
    EXPECT_EQ(versionFrame("1.2"), valueOf(body, TagFFMDetail));
    EXPECT_EQ(frame(TagFrequencyStep, utf8Value("25.00")), valueOf(body, TagPScan));
}

TEST(FFMSettingsForms, RoundTripXmlAndBinary)
{
    FFM_Settings s = minimalFFM();
    s.GetFrequency().SetMin(90.0);
    s.GetFrequency().SetUse(false);
    s.SetIFStep(0.01);
    s.SetIFStepAuto(true);
    s.SetBandwidthMode(FFM_Settings::BandwidthMode_Coupled);
    s.SetAnalogDemod(FFM_Settings::AnalogDemod_UNKNOWN);
    s.SetLevel(-1.5);
    s.SetUpperLevel(99.99);
    s.SetDetail(fullDetail());
    s.SetTunerMode(FFM_Settings::TunerMode_PanoramaScan);
    s.GetPScanSettings().SetStartFrequency(1.0);
    s.GetPScanSettings().SetStopFrequency(2.0);

    FFM_Settings fromBinary = roundTrip(s).fromBinary;
    EXPECT_EQ(QString("1.2"), fromBinary.GetInitialVersionLoaded());
    EXPECT_EQ(QString("1.2"), fromBinary.GetDetail().GetInitialVersionLoaded());

    fromBinary.GetDetail().SetSquelchValue(0);
    EXPECT_FALSE(fromBinary == s);
}

TEST(FFMSettingsForms, EmptyIFStepAutoTakesTheDefault)
{
    FFM_Settings s;
    ASSERT_TRUE(s.SetXmlString(ffmDocument(" Version=\"1.2\"", "<IFStepAuto/>"), true));
    EXPECT_TRUE(s.IsIFStepAutoSet());
    EXPECT_FALSE(s.GetIFStepAuto());
    FFM_Settings t;
    t.SetDefaultIFStepAuto(true);
    ASSERT_TRUE(t.SetXmlString(ffmDocument(" Version=\"1.2\"", "<IFStepAuto></IFStepAuto>"), true));
    EXPECT_TRUE(t.IsIFStepAutoSet());
    EXPECT_TRUE(t.GetIFStepAuto());
}

TEST(FFMSettingsForms, UnknownEnumNameInXml)
{
    const QString doc = ffmDocument(" Version=\"1.2\"", "<AnalogDemod>am</AnalogDemod>");
    const FFM_Settings lax =
        readUnknownEnumName(doc, "enum is not valid (classname=FFM_Settings,membername=m_analogDemod)",
                            &FFM_Settings::IsAnalogDemodSet, &FFM_Settings::GetAnalogDemod);
    // Written back, the invalid value is an empty element.
    EXPECT_TRUE(compactXml(lax).contains("<AnalogDemod></AnalogDemod>"));
}

// --- FFM_SettingsDetail -------------------------------------------------------------------------

TEST(FFMSettingsDetail, HasDataAlwaysTrue)
{
    FFM_SettingsDetail d;
    EXPECT_TRUE(d.HasData());
    EXPECT_FALSE(d.AnyData());
    d.SetChannelNo(1);
    EXPECT_TRUE(d.HasData());
    EXPECT_TRUE(d.AnyData());
    d.Reset();
    EXPECT_TRUE(d.HasData());
}

TEST(FFMSettingsDetail, EmptyDetailWritesOnlyTheVersion)
{
    FFM_SettingsDetail d;
    EXPECT_EQ(QString("<Detail Version=\"1.2\"/>"), compactXml(d));
    const QByteArray rep = d.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(QByteArray::fromHex("e156b910"), rep.left(4));
    EXPECT_EQ(versionFrame("1.2"), bodyOf(rep));
}

TEST(FFMSettingsDetail, AlarmEmptyFails)
{
    FFM_SettingsDetail d;
    EXPECT_THROW_MESSAGE(d.SetXmlString(detailDocument(" Version=\"1.2\"", "<Alarm></Alarm>"), true),
                         InvalidXmlException, "Please set a value or a default for the boolean 'Alarm' in 'Detail'.");
    EXPECT_FALSE(d.IsAlarmSet());
    // A default does not help: the element must carry a value.
    FFM_SettingsDetail withDefault;
    withDefault.SetDefaultAlarm(true);
    EXPECT_THROW(withDefault.SetXmlString(detailDocument(" Version=\"1.2\"", "<Alarm/>"), true), InvalidXmlException);
}

TEST(FFMSettingsDetail, ActiveEmptyFails)
{
    FFM_SettingsDetail d;
    d.SetValidate(false);
    EXPECT_THROW_MESSAGE(d.SetXmlString(detailDocument(" Version=\"1.2\"", "<Active/>"), true), InvalidXmlException,
                         "Please set a value or a default for the boolean 'Active' in 'Detail'.");
}

TEST(FFMSettingsDetail, GainCtrlEmptyIsEmptyString)
{
    FFM_SettingsDetail d;
    ASSERT_TRUE(d.SetXmlString(detailDocument(" Version=\"1.2\"", "<Gain_Ctrl></Gain_Ctrl><InvertedFMState/>"), true));
    EXPECT_TRUE(d.IsGain_CtrlSet());
    EXPECT_FALSE(d.GetGain_Ctrl().isNull());
    EXPECT_TRUE(d.GetGain_Ctrl().isEmpty());
    EXPECT_TRUE(d.IsInvertedFMStateSet());
    EXPECT_FALSE(d.GetInvertedFMState().isNull());
    EXPECT_TRUE(d.GetInvertedFMState().isEmpty());
    EXPECT_NO_THROW(d.Check());
}

TEST(FFMSettingsDetail, BoolTexts)
{
    struct Case
    {
        const char *text;
        bool value;
    };
    for (const Case &c : {Case{"true", true}, Case{"TRUE", true}, Case{"1", true}, Case{"yes", true},
                          Case{"false", false}, Case{"False", false}, Case{"0", false}}) {
        FFM_SettingsDetail d;
        ASSERT_TRUE(d.SetXmlString(
            detailDocument(" Version=\"1.2\"", QStringLiteral("<Active>%1</Active>").arg(c.text)), true));
        EXPECT_TRUE(d.IsActiveSet());
        EXPECT_EQ(c.value, d.GetActive()) << c.text;
    }
}

TEST(FFMSettingsDetail, IntsTravelAsRaw32)
{
    FFM_SettingsDetail d;
    d.SetChannelNo(-2);
    d.SetSquelchValue(0x01020304);
    const QByteArray body = bodyOf(d.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(QByteArray::fromHex("f7a248e7" "00000004" "fffffffe"), frame(TagChannelNo, valueOf(body, TagChannelNo)));
    EXPECT_EQ(QByteArray::fromHex("fffffffe"), valueOf(body, TagChannelNo));
    EXPECT_EQ(QByteArray::fromHex("01020304"), valueOf(body, TagSquelchValue));
    EXPECT_TRUE(body.contains(QByteArray::fromHex("efc6f156" "00000004" "01020304")));

    FFM_SettingsDetail back;
    QByteArray rep = d.GetBinaryRepresentationAsQByteArray();
    ASSERT_TRUE(back.SetBinaryRepresentation(rep));
    EXPECT_EQ(-2, back.GetChannelNo());
    EXPECT_EQ(0x01020304, back.GetSquelchValue());
    EXPECT_EQ(QString("<Detail Version=\"1.2\"><ChannelNo>-2</ChannelNo><SquelchValue>16909060</SquelchValue></Detail>"),
              compactXml(back));
}

TEST(FFMSettingsDetail, BoolIsOneByte)
{
    FFM_SettingsDetail d;
    d.SetActive(true);
    const QByteArray body = bodyOf(d.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(QByteArray::fromHex("16742428" "00000001" "01"), body.mid(body.size() - 9));
    EXPECT_EQ(QByteArray::fromHex("01"), valueOf(body, TagActive));
}

TEST(FFMSettingsDetail, MGCValueReadFromBinary)
{
    QByteArray rep = representation(FFM_SettingsDetail::GetId(),
                                     versionFrame("1.2") + frame(TagMGCValue, utf8Value("-33.25"))
                                         + frame(TagGainCtrl, utf8Value("AGC")));
    FFM_SettingsDetail d;
    ASSERT_TRUE(d.SetBinaryRepresentation(rep));
    EXPECT_TRUE(d.IsMGCValueSet());
    EXPECT_EQ(-33.25, d.GetMGCValue());
    EXPECT_EQ(QString("AGC"), d.GetGain_Ctrl());
}

TEST(FFMSettingsDetail, FullRoundTrip)
{
    const FFM_SettingsDetail d = fullDetail();
    const QString xml = compactXml(d);
    EXPECT_TRUE(xml.startsWith("<Detail Version=\"1.2\"><BFOFrequency>1.25</BFOFrequency><Gain_Ctrl>MGC</Gain_Ctrl>"))
        << xml.toStdString();
    EXPECT_TRUE(xml.contains("<Preselection>LOW NOISE</Preselection>"));
    EXPECT_TRUE(xml.contains("<MeasuremetTime>2019-12-31T23:00:01,002Z</MeasuremetTime>"));
    EXPECT_TRUE(xml.contains("<InvertedFMState></InvertedFMState>"));
    EXPECT_TRUE(xml.endsWith("<AntPreAmp>OFF</AntPreAmp></Detail>"));

    FFM_SettingsDetail fromXml;
    ASSERT_TRUE(fromXml.SetXmlString(d.GetXmlString(), true));
    EXPECT_TRUE(fromXml == d);
    EXPECT_EQ(xml, compactXml(fromXml));

    QByteArray rep = d.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(24, tagsOf(bodyOf(rep)).size());
    FFM_SettingsDetail fromBinary;
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(rep));
    EXPECT_TRUE(fromBinary == d);
    EXPECT_EQ(xml, compactXml(fromBinary));
}

TEST(FFMSettingsDetail, CheckNamesInvalidMembers)
{
    using D = FFM_SettingsDetail;
    expectCheckNamesSpoiled<D>(fullDetail(), "Detail", {
        {"Gain_Ctrl", [](D &d) { d.SetGain_Ctrl(QString()); }},
        {"Attenuation", [](D &d) { d.SetAttenuation(D::Attenuation(4)); }},
        {"AFC", [](D &d) { d.SetAFC(D::AFC(-1)); }},
        {"SquelchState", [](D &d) { d.SetSquelchState(D::SquelchState(2)); }},
        {"GainControlTime", [](D &d) { d.SetGainControlTime(D::GainControlTime(3)); }},
        {"Preselection", [](D &d) { d.SetPreselection(D::Preselection(3)); }},
        {"LevelDetector", [](D &d) { d.SetLevelDetector(D::LevelDetector(5)); }},
        {"InvertedFMState", [](D &d) { d.SetInvertedFMState(QString()); }},
        {"AntennaPolarisation", [](D &d) { d.SetAntennaPolarisation(D::AntennaPolarisation(4)); }},
        {"AntPreAmp", [](D &d) { d.SetAntPreAmp(D::AntPreAmp(2)); }},
    });
}

TEST(FFMSettingsDetail, NumbersBoolsAndTimeNeverFailCheck)
{
    FFM_SettingsDetail d;
    d.SetBFOFrequency(std::numeric_limits<double>::quiet_NaN());
    d.SetMGCValue(-1e300);
    d.SetActive(false);
    d.SetAlarm(true);
    d.SetChannelNo(-1);
    d.SetMeasuremetTime(QDateTime());
    EXPECT_TRUE(d.IsMeasuremetTimeSet());
    EXPECT_NO_THROW(d.Check());
}

TEST(FFMSettingsDetail, OlderDocumentResetsAndSkipsUnknown)
{
    for (const char *version : {"1.0", "1.1", "1.10"}) {
        FFM_SettingsDetail d;
        d.SetDefaultGain_Ctrl("AGC");
        d.SetGain_Ctrl("held");
        ASSERT_TRUE(d.SetXmlString(detailDocument(QStringLiteral(" Version=\"%1\"").arg(version),
                                                  "<Obsolete><ChannelNo>9</ChannelNo></Obsolete><SquelchValue>4</SquelchValue>"),
                                   true))
            << version;
        EXPECT_EQ(QString(version), d.GetInitialVersionLoaded());
        EXPECT_EQ(QString("AGC"), d.GetGain_Ctrl()) << version;
        EXPECT_FALSE(d.IsChannelNoSet()) << version;
        EXPECT_EQ(4, d.GetSquelchValue());
    }
}

TEST(FFMSettingsDetail, CurrentDocumentRefusesUnknown)
{
    for (const char *version : {"1.2", "2.5"}) {
        FFM_SettingsDetail d;
        d.SetDefaultGain_Ctrl("AGC");
        d.SetGain_Ctrl("held");
        EXPECT_THROW_MESSAGE(
            d.SetXmlString(detailDocument(QStringLiteral(" Version=\"%1\"").arg(version), "<Obsolete/>"), true),
            InvalidXmlException, "Unknown Tag 'Obsolete' in 'Detail'.");
        FFM_SettingsDetail lax;
        lax.SetValidate(false);
        lax.SetGain_Ctrl("held");
        ASSERT_TRUE(lax.SetXmlString(detailDocument(QStringLiteral(" Version=\"%1\"").arg(version),
                                                    "<Obsolete><ChannelNo>9</ChannelNo></Obsolete>"),
                                     true));
        EXPECT_EQ(QString("held"), lax.GetGain_Ctrl());
        EXPECT_EQ(9, lax.GetChannelNo());
    }
}

TEST(FFMSettingsDetail, BinaryOlderVersionResets)
{
    FFM_SettingsDetail d;
    d.SetDefaultAFC(FFM_SettingsDetail::AFC_ON);
    QByteArray rep = representation(FFM_SettingsDetail::GetId(),
                                    versionFrame("1.1") + frame(TagChannelNo, be32(5)) + frame(0x0badf00du, QByteArray(3, 'x')));
    ASSERT_TRUE(d.SetBinaryRepresentation(rep));
    EXPECT_EQ(QString("1.1"), d.GetInitialVersionLoaded());
    EXPECT_TRUE(d.IsAFCSet());
    EXPECT_EQ(FFM_SettingsDetail::AFC_ON, d.GetAFC());
    EXPECT_EQ(5, d.GetChannelNo());
}

TEST(FFMSettingsDetail, MeasuremetTimeSpelling)
{
    FFM_SettingsDetail d;
    ASSERT_TRUE(d.SetXmlString(
        detailDocument(" Version=\"1.1\"", "<MeasurementTime>2019-12-31T23:00:01,002Z</MeasurementTime>"), true));
    EXPECT_FALSE(d.IsMeasuremetTimeSet());
    ASSERT_TRUE(d.SetXmlString(
        detailDocument(" Version=\"1.2\"", "<MeasuremetTime>2019-12-31T23:00:01,002Z</MeasuremetTime>"), true));
    EXPECT_TRUE(d.IsMeasuremetTimeSet());
    EXPECT_EQ(samples::utc(2019, 12, 31, 23, 0, 1, 2), d.GetMeasuremetTime());
}
