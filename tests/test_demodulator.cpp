// Tests of the demodulator settings built so far: FSK, ASK, PSK, MPSK and MFSK
// with their details, VUHF, the tone and channel spacings, and the decoder and
// channel lists.

#include "golden.h"
#include "recordtestsupport.h"
#include "tags.h"


#include <functional>
#include <utility>
#include <vector>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;

namespace {

VUHF vuhf()
{
    VUHF v;
    v.SetPrimaryModulation(QStringLiteral("FM"));
    v.SetPrimaryModulationBandwidth(12500.0);
    v.SetAFCenterFrequency(1700.5);
    return v;
}

ToneSpacing toneSpacing()
{
    ToneSpacing t;
    t.AppendValue(170.0);
    t.AppendValue(425.25);
    t.AppendValue(850.0);
    return t;
}

FSK_SettingsDetail fskDetail()
{
    FSK_SettingsDetail d;
    d.SetVariant(FSK_SettingsDetail::Variant_Matched_Filter);
    d.SetBaudCapRange(5.0);
    d.SetBaudTrackRange(1.5);
    d.SetFrqOffTrack(50.0);
    d.SetSideband(FSK_SettingsDetail::Sideband_Lower_LSB);
    return d;
}

FSK_Settings fsk()
{
    FSK_Settings s;
    s.SetModType(FSK_Settings::ModType_FSK4);
    s.SetBaudrate(samples::baudrate());
    s.SetDetail(fskDetail());
    return s;
}

FSK_Settings fullFsk()
{
    FSK_Settings s = fsk();
    s.AppendShift(samples::shift());
    s.AppendShift(samples::valueRecord<Shift>(170.0));
    FSK_SettingsDetail d = fskDetail();
    d.SetVUHF(vuhf());
    d.SetBlockCycle(2.0);
    d.SetBlockLength(0.25);
    d.SetToneSpacing(toneSpacing());
    d.SetPrimaryModulation(QLatin1String(""));
    d.SetSubCarrierFrequency(1500.0);
    d.SetPrimaryModulationBandwidth(3000.0);
    s.SetDetail(d);
    return s;
}

ASK_Settings fullAsk()
{
    ASK_SettingsDetail d;
    d.SetBaudCapRange(2.0);
    d.SetBaudTrackRange(0.5);
    d.SetFrqOffTrack(25.0);
    d.SetVUHF(vuhf());
    ASK_Settings s;
    s.SetBaudrate(samples::valueRecord<Baudrate>(45.45));
    s.SetDetail(d);
    return s;
}

} // namespace

TEST(FSKSettings, EnumerationsWalkTheirWholeTables)
{
    checkEnumeration({"FSK2", "FSK4", "MSK"}, &FSK_Settings::GetModTypes, &FSK_Settings::GetGUIModTypes,
                     &FSK_Settings::ModTypeToName, &FSK_Settings::NameToModType, &FSK_Settings::IsValidModType);
    using D = FSK_SettingsDetail;
    checkEnumeration({"Upper (USB)", "Lower (LSB)"}, &D::GetSidebands, &D::GetGUISidebands, &D::SidebandToName,
                     &D::NameToSideband, &D::IsValidSideband);
    checkEnumeration({"Automatic", "Discriminator", "Matched Filter"}, &D::GetVariants, &D::GetGUIVariants,
                     &D::VariantToName, &D::NameToVariant, &D::IsValidVariant);
    EXPECT_EQ(int(D::Sideband_Upper_USB), 0);
    EXPECT_EQ(int(D::Variant_Matched_Filter), 2);
    EXPECT_EQ(FSK_Settings::GetId(), qint64(0x7220b0));
    EXPECT_EQ(VUHF::GetId(), qint64(qint32(0xbd740064)));
    EXPECT_EQ(ToneSpacing::GetId(), qint64(qint32(0xc894e311)));
}

TEST(FSKSettings, FullRecordsRoundTripInBothForms)
{
    roundTrip(fsk());
    roundTrip(fullFsk());
    roundTrip(fullAsk());
    roundTrip(vuhf());
    roundTrip(toneSpacing());
}

TEST(FSKSettings, MembersAreWrittenInTableOrder)
{
    const QByteArray body = bodyOf(fullFsk().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagModType, TagBaudrate, TagShift, TagFSKDetail}));
    EXPECT_EQ(compactXml(fsk()),
              QStringLiteral("<FSK_Settings><ModType>FSK4</ModType><Baudrate Min=\"-50.75\">1200.00</Baudrate>"
                             "<Detail><Variant>Matched Filter</Variant><BaudCapRange>5.00</BaudCapRange>"
                             "<BaudTrackRange>1.50</BaudTrackRange><FrqOffTrack>50.00</FrqOffTrack>"
                             "<Sideband>Lower (LSB)</Sideband></Detail></FSK_Settings>"));
}

TEST(FSKSettings, UnknownEnumNamesAreRefusedWithValidationOnAndStoredInvalidWithItOff)
{
    const QString document = compactXml(fsk()).replace(QStringLiteral("FSK4"), QStringLiteral("FSK8"));
    const FSK_Settings read =
        readUnknownEnumName(document, QStringLiteral("enum is not valid (classname=FSK_Settings,membername=m_modType)"),
                            &FSK_Settings::IsModTypeSet, &FSK_Settings::GetModType);
    EXPECT_EQ(read.GetBaudrate(), samples::baudrate());
}

TEST(FSKSettings, CheckNamesTheMandatoryMembers)
{
    expectCheckNamesSpoiled<FSK_SettingsDetail>(fskDetail(), "Detail", {
        {"Variant", [](FSK_SettingsDetail &d) { d.ResetVariant(); }},
        {"BaudCapRange", [](FSK_SettingsDetail &d) { d.ResetBaudCapRange(); }},
        {"FrqOffTrack", [](FSK_SettingsDetail &d) { d.ResetFrqOffTrack(); }},
        {"Sideband", [](FSK_SettingsDetail &d) { d.SetSideband(FSK_SettingsDetail::Sideband(2)); }},
        {"PrimaryModulation", [](FSK_SettingsDetail &d) { d.SetPrimaryModulation(QString()); }},
    });
    FSK_Settings withoutDetail = fsk();
    withoutDetail.ResetDetail();
    EXPECT_THROW_MESSAGE(withoutDetail.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Detail are not set properly in 'FSK_Settings'.");
}

TEST(FSKSettings, AnIncompleteShiftIsNotAppended)
{
    FSK_Settings s = fsk();
    Shift onlyMax;
    onlyMax.SetMax(100.0);
    EXPECT_THROW_MESSAGE(s.AppendShift(onlyMax), IncompleteDefinitionException,
                         "FSK_Settings: Tried to append not completely defined or invalid item Shift.");
    EXPECT_TRUE(std::as_const(s).GetShift().isEmpty());
}

TEST(ToneSpacing, ValuesTravelAsTextsWithTwoDecimals)
{
    const ToneSpacing t = toneSpacing();
    EXPECT_EQ(compactXml(t), QStringLiteral("<ToneSpacing><Value>170.00</Value><Value>425.25</Value>"
                                            "<Value>850.00</Value></ToneSpacing>"));
    const QByteArray value = valueOf(bodyOf(t.GetBinaryRepresentationAsQByteArray()), TagValue);
    EXPECT_EQ(value, be32(3) + utf8Value(QStringLiteral("170.00")) + utf8Value(QStringLiteral("425.25"))
                         + utf8Value(QStringLiteral("850.00")));
    ToneSpacing empty;
    empty.GetValue();
    EXPECT_TRUE(empty.HasData());
    EXPECT_EQ(valueOf(bodyOf(empty.GetBinaryRepresentationAsQByteArray()), TagValue), be32(0));
}

TEST(DecoderLists, TextsRoundTripAndNullTextsAreRefusedByCheck)
{
    Decoder decoder;
    decoder.AppendValue(QStringLiteral("ASCII"));
    decoder.AppendValue(QLatin1String(""));
    decoder.AppendValue(QString::fromUtf8("Kyrillisch \xd0\x96"));
    roundTrip(decoder);
    EXPECT_EQ(tagsOf(bodyOf(decoder.GetBinaryRepresentationAsQByteArray())), QVector<quint32>{TagTexts});

    ChannelSelection channels;
    channels.AppendValue(QStringLiteral("1"));
    channels.AppendValue(QStringLiteral("2"));
    roundTrip(channels);
    EXPECT_EQ(compactXml(channels),
              QStringLiteral("<ChannelSelection><Value>1</Value><Value>2</Value></ChannelSelection>"));

    Decoder spoiled;
    spoiled.SetValidate(false);
    spoiled.AppendValue(QString());
    EXPECT_THROW_MESSAGE(spoiled.Check(), OutOfRangeException, "Decoder: Please set Value properly.");
}

TEST(ASKSettings, DetailIsOptionalAndBaudrateMandatory)
{
    ASK_Settings s;
    s.SetBaudrate(samples::valueRecord<Baudrate>(50.0));
    EXPECT_TRUE(s.HasData());
    EXPECT_EQ(compactXml(s), QStringLiteral("<ASK_Settings><Baudrate>50.00</Baudrate></ASK_Settings>"));
    ASK_Settings none;
    none.SetDetail(fullAsk().GetDetail());
    EXPECT_FALSE(none.HasData());
    EXPECT_THROW_MESSAGE(none.Check(), IncompleteDefinitionException,
                         "Parameters for Baudrate are not set properly in 'ASK_Settings'.");
}

// --- PSK, MPSK and MFSK ------------------------------------------------------------------------

namespace {

ChannelSpacing channelSpacing()
{
    ChannelSpacing c;
    c.SetVisual(QStringLiteral("equidistant"));
    c.SetSamedistance(true);
    c.AppendValue(125.0);
    c.AppendValue(250.5);
    return c;
}

PSK_Settings fullPsk()
{
    PSK_SettingsDetail d;
    d.SetVUHF(vuhf());
    d.SetBaudCapRange(1.0);
    d.SetBaudTrackRange(0.25);
    d.SetEqualizerMode(false);
    d.SetFFE_FilterOrder(16.0);
    d.SetFFE_ConvergenceFactor(0.05);
    d.SetFrqOffTrack(10.0);
    d.SetSideband(PSK_SettingsDetail::Sideband_Upper_USB);
    PSK_Settings s;
    s.SetModType(PSK_Settings::ModType_PSK8B);
    s.SetBaudrate(samples::valueRecord<Baudrate>(2400.0));
    s.SetDetail(d);
    return s;
}

// The members the multi-channel details have in common.
template <class Detail>
Detail multiChannelDetail(double capRange, double trackRange, double offTrack, typename Detail::Sideband sideband)
{
    Detail d;
    d.SetBaudCapRange(capRange);
    d.SetBaudTrackRange(trackRange);
    d.SetFrqOffTrack(offTrack);
    d.SetChannelSpacing(channelSpacing());
    d.SetSideband(sideband);
    return d;
}

MPSK_Settings fullMpsk()
{
    MPSK_Settings s;
    s.SetModType(MPSK_Settings::ModType_McPSK4);
    s.SetBaudrate(samples::valueRecord<Baudrate>(75.0));
    s.SetDetail(multiChannelDetail<MPSK_SettingsDetail>(1.0, 0.5, 5.0, MPSK_SettingsDetail::Sideband_Lower_LSB));
    return s;
}

MFSK_Settings fullMfsk()
{
    MFSK_SettingsDetail d =
        multiChannelDetail<MFSK_SettingsDetail>(3.0, 1.0, 20.0, MFSK_SettingsDetail::Sideband_Upper_USB);
    d.SetVariant(MFSK_SettingsDetail::Variant_Discriminator);
    MFSK_Settings s;
    s.SetModType(MFSK_Settings::ModType_McFSK2);
    s.SetBaudrate(samples::valueRecord<Baudrate>(10.0));
    s.SetShift(samples::shift());
    s.SetDetail(d);
    return s;
}

} // namespace

TEST(PSKSettings, EnumerationsWalkTheirWholeTables)
{
    checkEnumeration({"PSK2A", "PSK2B", "PSK4A", "PSK4B", "PSK8A", "PSK8B"}, &PSK_Settings::GetModTypes,
                     &PSK_Settings::GetGUIModTypes, &PSK_Settings::ModTypeToName, &PSK_Settings::NameToModType,
                     &PSK_Settings::IsValidModType);
    checkEnumeration({"McPSK2", "McPSK4"}, &MPSK_Settings::GetModTypes, &MPSK_Settings::GetGUIModTypes,
                     &MPSK_Settings::ModTypeToName, &MPSK_Settings::NameToModType, &MPSK_Settings::IsValidModType);
    checkEnumeration({"McFSK2"}, &MFSK_Settings::GetModTypes, &MFSK_Settings::GetGUIModTypes,
                     &MFSK_Settings::ModTypeToName, &MFSK_Settings::NameToModType, &MFSK_Settings::IsValidModType);
    using M = MFSK_SettingsDetail;
    checkEnumeration({"Automatic", "Discriminator", "Matched Filter"}, &M::GetVariants, &M::GetGUIVariants,
                     &M::VariantToName, &M::NameToVariant, &M::IsValidVariant);
    checkEnumeration({"Upper (USB)", "Lower (LSB)"}, &PSK_SettingsDetail::GetSidebands,
                     &PSK_SettingsDetail::GetGUISidebands, &PSK_SettingsDetail::SidebandToName,
                     &PSK_SettingsDetail::NameToSideband, &PSK_SettingsDetail::IsValidSideband);
    checkEnumeration({"Upper (USB)", "Lower (LSB)"}, &MPSK_SettingsDetail::GetSidebands,
                     &MPSK_SettingsDetail::GetGUISidebands, &MPSK_SettingsDetail::SidebandToName,
                     &MPSK_SettingsDetail::NameToSideband, &MPSK_SettingsDetail::IsValidSideband);
    checkEnumeration({"Upper (USB)", "Lower (LSB)"}, &M::GetSidebands, &M::GetGUISidebands, &M::SidebandToName,
                     &M::NameToSideband, &M::IsValidSideband);
    EXPECT_EQ(PSK_SettingsDetail::GetId(), qint64(qint32(0xa9bb551c)));
    EXPECT_EQ(MPSK_Settings::GetId(), qint64(qint32(0x8e134104)));
    EXPECT_EQ(ChannelSpacing::GetId(), qint64(qint32(0x8ea4f92f)));
}

TEST(PSKSettings, FullRecordsRoundTripInBothForms)
{
    roundTrip(fullPsk());
    roundTrip(fullMpsk());
    roundTrip(fullMfsk());
    roundTrip(channelSpacing());
}

TEST(PSKSettings, BooleansTravelRawInBinaryAndRefuseAnEmptyElement)
{
    const QByteArray body = bodyOf(channelSpacing().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(valueOf(body, 0xab24ee7fu), QByteArray(1, '\x01'));
    ChannelSpacing read;
    read.SetValidate(false);
    EXPECT_THROW_MESSAGE(read.SetXmlString(QStringLiteral("<ChannelSpacing><Samedistance/></ChannelSpacing>"), true),
                         ORBELIN::InvalidXmlException,
                         "Please set a value or a default for the boolean 'Samedistance' in 'ChannelSpacing'.");
    PSK_SettingsDetail detail;
    EXPECT_THROW_MESSAGE(detail.SetXmlString(QStringLiteral("<Detail><EqualizerMode></EqualizerMode></Detail>"), true),
                         ORBELIN::InvalidXmlException,
                         "Please set a value or a default for the boolean 'EqualizerMode' in 'Detail'.");
    ASSERT_TRUE(detail.SetXmlString(QStringLiteral("<Detail><EqualizerMode>FALSE</EqualizerMode></Detail>"), true));
    EXPECT_FALSE(detail.GetEqualizerMode());
    ASSERT_TRUE(detail.SetXmlString(QStringLiteral("<Detail><EqualizerMode>yes</EqualizerMode></Detail>"), true));
    EXPECT_TRUE(detail.GetEqualizerMode());
}

TEST(PSKSettings, TheChannelSpacingOfAMultiChannelDetailIsMandatory)
{
    MPSK_SettingsDetail d = fullMpsk().GetDetail();
    d.ResetChannelSpacing();
    EXPECT_THROW_MESSAGE(d.Check(), IncompleteDefinitionException,
                         "Parameters for ChannelSpacing are not set properly in 'Detail'.");
    MFSK_Settings s = fullMfsk();
    s.ResetShift();
    EXPECT_THROW_MESSAGE(s.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Shift are not set properly in 'MFSK_Settings'.");
}

// --- narrow protocols ----------------------------------------------------------------------------

namespace {

FAX_Settings fullFax()
{
    FAX_SettingsDetail d;
    d.SetDrumSpeed(FAX_SettingsDetail::DrumSpeed_120);
    d.SetIOC(FAX_SettingsDetail::IOC_576);
    d.SetShift(samples::shift());
    FAX_Settings s;
    s.SetModType(FAX_Settings::ModType_Press_Fax);
    s.SetDetail(d);
    return s;
}

MT_Settings fullMt()
{
    MT_SettingsDetail d;
    d.SetVUHF(vuhf());
    d.SetToneCapRange(4.0);
    d.SetToneTrackRange(2.0);
    d.SetToneDuration(0.05);
    d.SetFrqOffTrack(15.0);
    d.SetToneSpacing(toneSpacing());
    d.SetSideband(MT_SettingsDetail::Sideband_Upper_USB);
    MT_Settings s;
    s.SetDetail(d);
    return s;
}

F7W_Settings fullF7w()
{
    F7W_SettingsDetail d;
    d.SetToneSpacing(toneSpacing());
    F7W_Settings s;
    s.SetBaudrate_A(100.0);
    s.SetBaudrate_B(200.0);
    s.SetBitStream_Selection(F7W_Settings::BitStream_Selection_Auto);
    s.SetDetail(d);
    return s;
}

} // namespace

TEST(NarrowProtocols, EnumerationsWalkTheirWholeTables)
{
    checkEnumeration({"POCSAG", "Flex"}, &POCSAG_Settings::GetModTypes, &POCSAG_Settings::GetGUIModTypes,
                     &POCSAG_Settings::ModTypeToName, &POCSAG_Settings::NameToModType,
                     &POCSAG_Settings::IsValidModType);
    checkEnumeration({"FM Fax", "AM Fax", "Press Fax"}, &FAX_Settings::GetModTypes, &FAX_Settings::GetGUIModTypes,
                     &FAX_Settings::ModTypeToName, &FAX_Settings::NameToModType, &FAX_Settings::IsValidModType);
    using D = FAX_SettingsDetail;
    checkEnumeration({"60", "90", "120", "180", "240"}, &D::GetDrumSpeeds, &D::GetGUIDrumSpeeds, &D::DrumSpeedToName,
                     &D::NameToDrumSpeed, &D::IsValidDrumSpeed);
    checkEnumeration({"288", "352", "576"}, &D::GetIOCs, &D::GetGUIIOCs, &D::IOCToName, &D::NameToIOC,
                     &D::IsValidIOC);
    checkEnumeration({"Upper (USB)", "Lower (LSB)"}, &MT_SettingsDetail::GetSidebands,
                     &MT_SettingsDetail::GetGUISidebands, &MT_SettingsDetail::SidebandToName,
                     &MT_SettingsDetail::NameToSideband, &MT_SettingsDetail::IsValidSideband);
    checkEnumeration({"A", "B", "Auto"}, &F7W_Settings::GetBitStream_Selections,
                     &F7W_Settings::GetGUIBitStream_Selections, &F7W_Settings::BitStream_SelectionToName,
                     &F7W_Settings::NameToBitStream_Selection, &F7W_Settings::IsValidBitStream_Selection);
    EXPECT_EQ(MPT_Settings::GetId(), qint64(qint32(0x9b629b10)));
    EXPECT_EQ(F7W_SettingsDetail::GetId(), qint64(qint32(0xe82f50b4)));
}

TEST(NarrowProtocols, FullRecordsRoundTripInBothForms)
{
    Morse_Settings morse;
    morse.SetSpeed(22.5);
    morse.SetAutoMode(true);
    roundTrip(morse);
    MPT_Settings mpt;
    mpt.SetControlChannelID(2147483647u);
    mpt.SetChannelSpace(12500.0);
    roundTrip(mpt);
    POCSAG_Settings pocsag;
    pocsag.SetModType(POCSAG_Settings::ModType_Flex);
    pocsag.SetBaudrate(samples::valueRecord<Baudrate>(1600.0));
    roundTrip(pocsag);
    roundTrip(fullFax());
    roundTrip(fullMt());
    roundTrip(fullF7w());
}

TEST(NarrowProtocols, AnUnsignedChannelIdTravelsAsA64BitIntegerAndReadsAsAnIntText)
{
    MPT_Settings mpt;
    mpt.SetControlChannelID(4000000000u);
    mpt.SetChannelSpace(12.5);
    const QByteArray value = valueOf(bodyOf(mpt.GetBinaryRepresentationAsQByteArray()), 0xe73527a9u);
    EXPECT_EQ(value, be32(0) + be32(4000000000u));
    EXPECT_TRUE(compactXml(mpt).contains(QStringLiteral("<ControlChannelID>4000000000</ControlChannelID>")));
    // The text is read as an int: beyond the int range it reads as 0.
    MPT_Settings read;
    ASSERT_TRUE(read.SetXmlString(compactXml(mpt), true));
    EXPECT_EQ(read.GetControlChannelID(), 0u);
}

TEST(NarrowProtocols, MandatoryChildrenOfTheDetailsAreTested)
{
    FAX_SettingsDetail fax = fullFax().GetDetail();
    fax.ResetShift();
    EXPECT_THROW_MESSAGE(fax.Check(), IncompleteDefinitionException,
                         "Parameters for Shift are not set properly in 'Detail'.");
    MT_Settings empty;
    empty.GetDetail();
    EXPECT_THROW_MESSAGE(empty.Check(), OutOfRangeException, "Detail: Please set ToneCapRange properly.");
    F7W_SettingsDetail f7w;
    f7w.SetValidate(false);
    EXPECT_FALSE(f7w.HasData());
    f7w.SetToneSpacing(toneSpacing());
    EXPECT_TRUE(f7w.HasData());
}

// --- standard waveforms ------------------------------------------------------------------------

namespace {

MILSTD_Settings milstd(MILSTD_Settings::ModType modType)
{
    MILSTD_Settings m;
    m.SetModType(modType);
    m.SetDataFormat(QStringLiteral("8N1"));
    m.SetDiversity(QStringLiteral("none"));
    m.SetInterleaverLength(QStringLiteral("long"));
    m.SetSpeedLevel(QStringLiteral("3"));
    return m;
}

} // namespace

TEST(StandardWaveforms, EnumerationsWalkTheirWholeTables)
{
    using P = PACCLO_Settings;
    checkEnumeration({"Pactor II", "Pactor III", "Clover 2", "Clover 2000"}, &P::GetModTypes, &P::GetGUIModTypes,
                     &P::ModTypeToName, &P::NameToModType, &P::IsValidModType);
    checkEnumeration({"Pactor", "Clover"}, &P::GetModes, &P::GetGUIModes, &P::ModeToName, &P::NameToMode,
                     &P::IsValidMode);
    checkEnumeration({"Automatic", "Level 1", "Level 2", "Level 3", "Level 4", "Level 5", "Level 6"}, &P::GetSpeeds,
                     &P::GetGUISpeeds, &P::SpeedToName, &P::NameToSpeed, &P::IsValidSpeed);
    checkEnumeration({"Stanag 4285", "Stanag 4529"}, &STANAG_Settings::GetModTypes, &STANAG_Settings::GetGUIModTypes,
                     &STANAG_Settings::ModTypeToName, &STANAG_Settings::NameToModType,
                     &STANAG_Settings::IsValidModType);
    checkEnumeration({"188-110A", "188-110A App. B", "188-110B App. C", "188-141B App. C"},
                     &MILSTD_Settings::GetModTypes, &MILSTD_Settings::GetGUIModTypes, &MILSTD_Settings::ModTypeToName,
                     &MILSTD_Settings::NameToModType, &MILSTD_Settings::IsValidModType);
    using G = General_Settings;
    checkEnumeration({"Hellschreiber", "Packet Radio", "SSTV", "Selective Call", "DTMF", "ACARS", "ACARS_HF", "ATIS",
                      "FMS-BOS", "ZVEI-VDEW", "WEFAX", "AIS", "ICAO_SELCAL", "HC_ARQ", "Mil-Std 188-110A",
                      "Mil-Std 188-141B (Appendix C)", "Mil-Std 188-110B (Appendix C)", "STANAG", "PSK31", "FLEX",
                      "GMDSS", "None"},
                     &G::GetModes, &G::GetGUIModes, &G::ModeToName, &G::NameToMode, &G::IsValidMode);
    checkEnumeration({
        "AM", "FM", "300", "1200", "9600", "AUTO", "M1_3", "M2_4", "MHQ1YUV", "MHQ2YUV", "S1_3", "S2_4", "SDX",
        "SDX2", "R8BW", "R12BW", "R24BW", "R36BW", "R43BW", "R12YUV", "R24YUV", "R36YUV", "R72YUV",
        "SC1_8_16IBW", "SC1_16_32BW", "SC1_24BW", "SC1_24_48l", "SC1_48_96", "SC2_30_60", "SC2_120", "SC2_180",
        "SM1", "SM2", "SMDX", "AVT24", "AVT24N", "AVT24Q", "AVT24NQ", "AVT90", "AVT90N", "AVT90Q", "AVT90NQ",
        "AVT94N", "AVT94Q", "AVT94NQ", "AVT125BW", "AVT125N", "AVT125Q", "AVT125NQ", "AVT188", "AVT188N",
        "AVT188Q", "AVT188NQ", "P", "P3", "P5", "P7", "PD50YUV", "PD65YUV", "PD90YUV", "PD120YUV", "PD160YUV",
        "PD180YUV", "PD240YUV", "PD290YUV", "J120", "GVA125BW", "GVA125", "GVA250", "VF480BW", "VFC", "MS1",
        "MS2", "ZVEI-1", "ZVEI-2", "CCIR-1", "CCIR-2", "VDEW", "CCITT", "EEA", "EIA", "EURO", "NATEL", "600",
        "BPSK", "QPSK"},
                     &G::GetModTypes, &G::GetGUIModTypes, &G::ModTypeToName, &G::NameToModType, &G::IsValidModType);
    EXPECT_EQ(int(G::ModType_ZVEI_1), 73);
    EXPECT_EQ(int(G::Mode_Mil_Std_188_141B_Appendix_C), 15);
    EXPECT_EQ(int(MILSTD_Settings::ModType_188_110A_App_B), 1);
    EXPECT_EQ(TransmissionSystem::GetId(), qint64(0x0e056f98));
}

TEST(StandardWaveforms, FullRecordsRoundTripInBothForms)
{
    PACCLO_Settings pacclo;
    pacclo.SetMode(PACCLO_Settings::Mode_Clover);
    pacclo.SetModType(PACCLO_Settings::ModType_Clover_2000);
    pacclo.SetSpeed(PACCLO_Settings::Speed_Level_6);
    roundTrip(pacclo);
    STANAG_Settings stanag;
    stanag.SetModType(STANAG_Settings::ModType_Stanag_4529);
    stanag.SetDataRate(QStringLiteral("2400"));
    stanag.SetInterleaverMode(QLatin1String(""));
    roundTrip(stanag);
    roundTrip(milstd(MILSTD_Settings::ModType_188_141B_App_C));
    General_Settings general;
    general.SetMode(General_Settings::Mode_ACARS_HF);
    general.SetModType(General_Settings::ModType_QPSK);
    roundTrip(general);
    TransmissionSystemDetail detail;
    detail.SetParameters(QStringLiteral("k=7"));
    TransmissionSystem system;
    system.SetMode(QStringLiteral("DRM"));
    system.SetUseMode(true);
    system.SetModType(QStringLiteral("OFDM"));
    system.SetBaudrate(samples::baudrate());
    system.AppendShift(samples::shift());
    system.SetDetail(detail);
    roundTrip(system);
}

TEST(StandardWaveforms, ModeAndModTypeOfGeneralSettingsAreIndependent)
{
    // Any Mode goes with any ModType, and ModType may stay unset.
    General_Settings general;
    general.SetMode(General_Settings::Mode_DTMF);
    EXPECT_NO_THROW(general.Check());
    general.SetModType(General_Settings::ModType_AVT188NQ);
    EXPECT_NO_THROW(general.Check());
    EXPECT_EQ(compactXml(general),
              QStringLiteral("<General_Settings><Mode>DTMF</Mode><ModType>AVT188NQ</ModType></General_Settings>"));
    general.SetValidate(false);
    general.SetModType(General_Settings::ModType(86));
    EXPECT_THROW_MESSAGE(general.Check(), OutOfRangeException, "General_Settings: Please set ModType properly.");
    EXPECT_THROW_MESSAGE(General_Settings().SetModType(General_Settings::ModType(86)), OutOfRangeException,
                         "enum is not valid (classname=General_Settings,membername=m_modType)");
}

TEST(StandardWaveforms, TheMandatoryTextsAreNamedByCheck)
{
    expectCheckNamesSpoiled<MILSTD_Settings>(milstd(MILSTD_Settings::ModType_188_110A), "MILSTD_Settings", {
        {"DataFormat", [](MILSTD_Settings &m) { m.SetDataFormat(QString()); }},
        {"Diversity", [](MILSTD_Settings &m) { m.ResetDiversity(); }},
        {"InterleaverLength", [](MILSTD_Settings &m) { m.SetInterleaverLength(QString()); }},
        {"SpeedLevel", [](MILSTD_Settings &m) { m.ResetSpeedLevel(); }},
    });
    TransmissionSystem system;
    system.SetDetail(TransmissionSystemDetail());
    system.SetValidate(false);
    EXPECT_THROW_MESSAGE(system.Check(), OutOfRangeException, "TransmissionSystem: Please set Mode properly.");
}

// --- the choice record -----------------------------------------------------------------------------

namespace {

using Choice = Demodulator_Settings::ChoiceDemodulator_Settings;

Demodulator_Settings demodulator()
{
    Demodulator_Settings d;
    d.SetMode(Demodulator_Settings::Mode_Unknown);
    d.SetFrequencyOffset(-120.5);
    return d;
}

// Selects each branch in turn with a complete record, in the order of the
// choice's names.
const std::vector<std::function<void(Demodulator_Settings &)>> &branches()
{
    static const std::vector<std::function<void(Demodulator_Settings &)>> setters = {
        [](Demodulator_Settings &d) { d.SetASK_Settings(fullAsk()); },
        [](Demodulator_Settings &d) { d.SetFSK_Settings(fullFsk()); },
        [](Demodulator_Settings &d) { d.SetPSK_Settings(fullPsk()); },
        [](Demodulator_Settings &d) {
            Morse_Settings m;
            m.SetSpeed(18.0);
            d.SetMorse_Settings(m);
        },
        [](Demodulator_Settings &d) { d.SetMPSK_Settings(fullMpsk()); },
        [](Demodulator_Settings &d) { d.SetMFSK_Settings(fullMfsk()); },
        [](Demodulator_Settings &d) {
            MPT_Settings m;
            m.SetControlChannelID(7u);
            m.SetChannelSpace(12.5);
            d.SetMPT_Settings(m);
        },
        [](Demodulator_Settings &d) {
            POCSAG_Settings p;
            p.SetModType(POCSAG_Settings::ModType_POCSAG);
            p.SetBaudrate(samples::valueRecord<Baudrate>(512.0));
            d.SetPOCSAG_Settings(p);
        },
        [](Demodulator_Settings &d) { d.SetFAX_Settings(fullFax()); },
        [](Demodulator_Settings &d) { d.SetMT_Settings(fullMt()); },
        [](Demodulator_Settings &d) {
            PACCLO_Settings p;
            p.SetMode(PACCLO_Settings::Mode_Pactor);
            p.SetModType(PACCLO_Settings::ModType_Pactor_III);
            p.SetSpeed(PACCLO_Settings::Speed_Automatic);
            d.SetPACCLO_Settings(p);
        },
        [](Demodulator_Settings &d) { d.SetF7W_Settings(fullF7w()); },
        [](Demodulator_Settings &d) {
            General_Settings g;
            g.SetMode(General_Settings::Mode_AIS);
            d.SetGeneral_Settings(g);
        },
        [](Demodulator_Settings &d) {
            TransmissionSystemDetail detail;
            detail.SetParameters(QStringLiteral("robustness B"));
            TransmissionSystem t;
            t.SetMode(QStringLiteral("DRM"));
            t.SetUseMode(false);
            t.SetModType(QStringLiteral("OFDM"));
            t.SetBaudrate(samples::valueRecord<Baudrate>(41.66));
            t.AppendShift(samples::valueRecord<Shift>(46.88));
            t.SetDetail(detail);
            d.SetTransmissionSystem(t);
        },
        [](Demodulator_Settings &d) {
            STANAG_Settings s;
            s.SetModType(STANAG_Settings::ModType_Stanag_4285);
            s.SetDataRate(QStringLiteral("600"));
            s.SetInterleaverMode(QStringLiteral("long"));
            d.SetSTANAG_Settings(s);
        },
        [](Demodulator_Settings &d) { d.SetMILSTD_Settings(milstd(MILSTD_Settings::ModType_188_110A_App_B)); },
    };
    return setters;
}

} // namespace

TEST(DemodulatorSettings, ModeAndChoiceNames)
{
    using D = Demodulator_Settings;
    checkEnumeration({"NONE", "ASK", "FSK", "PSK", "Morse", "MPSK", "MFSK", "POCSAG", "FAX", "MT", "PACCLO", "F7W",
                      "MPT", "General", "TransmissionSystem", "STANAG", "MILSTD", "Unknown"},
                     &D::GetModes, &D::GetGUIModes, &D::ModeToName, &D::NameToMode, &D::IsValidMode);
    const QStringList choices = {"ASK_Settings", "FSK_Settings", "PSK_Settings", "Morse_Settings", "MPSK_Settings",
                                 "MFSK_Settings", "MPT_Settings", "POCSAG_Settings", "FAX_Settings", "MT_Settings",
                                 "PACCLO_Settings", "F7W_Settings", "General_Settings", "TransmissionSystem",
                                 "STANAG_Settings", "MILSTD_Settings"};
    EXPECT_EQ(D::GetChoiceDemodulator_Settingss(), choices);
    EXPECT_EQ(D::GetGUIChoiceDemodulator_Settingss(), choices);
    D d;
    for (int i = 0; i < choices.size(); ++i) {
        EXPECT_EQ(d.ChoiceDemodulator_SettingsToName(Choice(i)), choices.at(i));
        EXPECT_EQ(int(d.NameToChoiceDemodulator_Settings(choices.at(i))), i);
    }
    EXPECT_TRUE(d.ChoiceDemodulator_SettingsToName(Choice(-1)).isNull());
    EXPECT_EQ(int(d.NameToChoiceDemodulator_Settings(QStringLiteral("FSK"))), -1);
    EXPECT_EQ(D::GetId(), qint64(qint32(0x909127d8)));
}

TEST(DemodulatorSettings, EachBranchInTurnRoundTripsInBothForms)
{
    const QStringList names = Demodulator_Settings::GetChoiceDemodulator_Settingss();
    for (int i = 0; i < int(branches().size()); ++i) {
        Demodulator_Settings d = demodulator();
        branches().at(i)(d);
        EXPECT_EQ(int(d.GetChoiceDemodulator_Settings()), i);
        roundTrip(d);
        const QString xml = compactXml(d);
        for (int other = 0; other < names.size(); ++other) {
            EXPECT_EQ(xml.contains(QStringLiteral("<%1").arg(names.at(other))), other == i)
                << names.at(i).toStdString() << " / " << names.at(other).toStdString();
        }
    }
}

TEST(DemodulatorSettings, TwoBranchesSetWriteOnlyTheLast)
{
    Demodulator_Settings d = demodulator();
    d.SetFSK_Settings(fullFsk());
    d.SetASK_Settings(fullAsk());
    EXPECT_TRUE(d.IsFSK_SettingsSet());
    EXPECT_EQ(d.GetChoiceDemodulator_Settings(), Demodulator_Settings::ChoiceDemodulator_Settings_ASK_Settings);
    const QString xml = compactXml(d);
    EXPECT_TRUE(xml.contains(QStringLiteral("<ASK_Settings>")));
    EXPECT_FALSE(xml.contains(QStringLiteral("<FSK_Settings>")));
    const QByteArray body = bodyOf(d.GetBinaryRepresentationAsQByteArray());
    EXPECT_TRUE(hasTag(body, 0xf71d59b8u));
    EXPECT_FALSE(hasTag(body, 0xbcf3b108u));
}

TEST(DemodulatorSettings, AnInvalidChoiceChecksNoBranchAndWritesNone)
{
    Demodulator_Settings d = demodulator();
    Morse_Settings incomplete;
    incomplete.SetAutoMode(true);
    d.SetMorse_Settings(incomplete);
    EXPECT_THROW_MESSAGE(
        d.Check(), IncompleteDefinitionException,
        "Demodulator_Settings:Check failed. The mandatory member m_morse_Settings is not set or mandatory data of the "
        "member is not set.");
    d.ResetChoiceDemodulator_Settings();
    EXPECT_NO_THROW(d.Check());
    EXPECT_FALSE(d.HasData());
    d.SetValidate(false);
    EXPECT_FALSE(compactXml(d).contains(QStringLiteral("Morse_Settings")));
}

TEST(DemodulatorSettings, EveryBranchNamesItsMemberWhenIncomplete)
{
    const QStringList fields = {"m_aSK_Settings", "m_fSK_Settings", "m_pSK_Settings", "m_morse_Settings",
                                "m_mPSK_Settings", "m_mFSK_Settings", "m_mPT_Settings", "m_pOCSAG_Settings",
                                "m_fAX_Settings", "m_mT_Settings", "m_pACCLO_Settings", "m_f7W_Settings",
                                "m_general_Settings", "m_transmissionSystem", "m_sTANAG_Settings",
                                "m_mILSTD_Settings"};
    for (int i = 0; i < fields.size(); ++i) {
        Demodulator_Settings d = demodulator();
        d.InitChoice(Choice(i)); // the branch's default record: empty
        EXPECT_EQ(int(d.GetChoiceDemodulator_Settings()), i);
        EXPECT_THROW_MESSAGE(d.Check(), IncompleteDefinitionException,
                             QStringLiteral("Demodulator_Settings:Check failed. The mandatory member %1 is not set or "
                                            "mandatory data of the member is not set.")
                                 .arg(fields.at(i)));
    }
    Demodulator_Settings d = demodulator();
    EXPECT_THROW_MESSAGE(d.InitChoice(Choice(-1)), OutOfRangeException,
                         "Invalid enum value set in 'Demodulator_Settings'.");
    EXPECT_FALSE(d.IsModeSet()); // InitChoice reset the record first
}

TEST(DemodulatorSettings, ReadingABranchSelectsIt)
{
    Demodulator_Settings source = demodulator();
    source.SetMT_Settings(fullMt());
    Demodulator_Settings read;
    ASSERT_TRUE(read.SetXmlString(source.GetXmlString(), true));
    EXPECT_EQ(read.GetChoiceDemodulator_Settings(), Demodulator_Settings::ChoiceDemodulator_Settings_MT_Settings);
    EXPECT_TRUE(read.IsMT_SettingsSet());
    EXPECT_EQ(read, source);
}

// --- bad input ------------------------------------------------------------------------------------

TEST(DemodulatorBadInput, UnknownElementsAndTagsInsideABranchAreSkipped)
{
    Demodulator_Settings source = demodulator();
    source.SetFSK_Settings(fullFsk());
    QString xml = compactXml(source);
    xml.replace(QStringLiteral("<ModType>"), QStringLiteral("<Unknown><ModType>MSK</ModType></Unknown><ModType>"));
    Demodulator_Settings read;
    ASSERT_TRUE(read.SetXmlString(xml, true));
    EXPECT_EQ(read, source);

    // An unknown tag between the members of the branch's body.
    const QByteArray body = bodyOf(fullFsk().GetBinaryRepresentationAsQByteArray());
    QByteArray spliced = frame(0x01020304u, QByteArray("xyz")) + body;
    QByteArray rep = representation(FSK_Settings::GetId(), spliced);
    FSK_Settings fsk;
    ASSERT_TRUE(fsk.SetBinaryRepresentation(rep));
    EXPECT_EQ(fsk, fullFsk());
}

TEST(DemodulatorBadInput, AnUnknownNameInABranchFailsWithValidationOnAndReadsInvalidWithItOff)
{
    Demodulator_Settings source = demodulator();
    source.SetPSK_Settings(fullPsk());
    const QString xml = compactXml(source).replace(QStringLiteral(">PSK8B<"), QStringLiteral(">PSK16<"));
    Demodulator_Settings strict = demodulator();
    EXPECT_FALSE(strict.SetXmlString(xml));
    EXPECT_EQ(strict, demodulator());
    EXPECT_THROW_MESSAGE(strict.SetXmlString(xml, true), OutOfRangeException,
                         "enum is not valid (classname=PSK_Settings,membername=m_modType)");

    Demodulator_Settings lax;
    lax.SetValidate(false);
    ASSERT_TRUE(lax.SetXmlString(xml, true));
    EXPECT_TRUE(lax.GetPSK_Settings().IsModTypeSet());
    EXPECT_EQ(int(std::as_const(lax).GetPSK_Settings().GetModType()), -1);
}

TEST(DemodulatorBadInput, ATruncatedBranchKeepsTheRecordAsItWas)
{
    Demodulator_Settings source = demodulator();
    source.SetMFSK_Settings(fullMfsk());
    const QByteArray whole = source.GetBinaryRepresentationAsQByteArray();
    Demodulator_Settings target = demodulator();
    target.SetMorse_Settings(Morse_Settings());
    const Demodulator_Settings before = target;
    // Every cut inside the record, the branch's body among them.
    for (int size = 0; size < whole.size(); size += 7) {
        QByteArray cut = whole.left(size);
        EXPECT_FALSE(target.SetBinaryRepresentation(cut)) << size;
        EXPECT_EQ(target, before) << size;
    }
    // A branch element with broken content: text where a child belongs.
    QString xml = compactXml(source);
    xml.replace(QStringLiteral("<Detail>"), QStringLiteral("<Detail>&broken;"));
    EXPECT_FALSE(target.SetXmlString(xml));
    EXPECT_EQ(target, before);
}

// --- golden files -----------------------------------------------------------------------------------

// One Demodulator_Settings per branch, with the optional members of the record
// set too, so that every demodulator record stands in one of the files.
TEST(DemodulatorGolden, EachBranchWritesAndReadsItsGoldenFiles)
{
    const QStringList names = Demodulator_Settings::GetChoiceDemodulator_Settingss();
    for (int i = 0; i < int(branches().size()); ++i) {
        Demodulator_Settings d = demodulator();
        Decoder decoder;
        decoder.AppendValue(QStringLiteral("ITA2"));
        decoder.AppendValue(QStringLiteral("SITOR-B"));
        d.SetDecoder(decoder);
        ChannelSelection channels;
        channels.AppendValue(QStringLiteral("upper"));
        d.SetChannelSelection(channels);
        d.SetAlphabet(QStringLiteral("Latin"));
        d.SetParameters(QLatin1String(""));
        branches().at(i)(d);
        expectGolden(d, QStringLiteral("demodulator_%1").arg(names.at(i).toLower()));
    }
}

namespace {

// The check of one record's golden pair, record_<name>.xml and .bin.
template <class R>
std::function<void()> golden(const char *name, R (*make)())
{
    return [name, make] { expectGolden(make(), QStringLiteral("record_%1").arg(QLatin1String(name))); };
}

Decoder goldenDecoder()
{
    Decoder d;
    d.AppendValue(QStringLiteral("ITA2"));
    d.AppendValue(QLatin1String(""));
    return d;
}

ChannelSelection goldenChannels()
{
    ChannelSelection c;
    c.AppendValue(QStringLiteral("lower"));
    return c;
}

Morse_Settings goldenMorse()
{
    Morse_Settings m;
    m.SetSpeed(24.5);
    m.SetAutoMode(false);
    return m;
}

MPT_Settings goldenMpt()
{
    MPT_Settings m;
    m.SetControlChannelID(1234u);
    m.SetChannelSpace(12.5);
    return m;
}

POCSAG_Settings goldenPocsag()
{
    POCSAG_Settings p;
    p.SetModType(POCSAG_Settings::ModType_POCSAG);
    p.SetBaudrate(samples::valueRecord<Baudrate>(1200.0));
    return p;
}

PACCLO_Settings goldenPacclo()
{
    PACCLO_Settings p;
    p.SetMode(PACCLO_Settings::Mode_Pactor);
    p.SetModType(PACCLO_Settings::ModType_Pactor_II);
    p.SetSpeed(PACCLO_Settings::Speed_Level_3);
    return p;
}

STANAG_Settings goldenStanag()
{
    STANAG_Settings s;
    s.SetModType(STANAG_Settings::ModType_Stanag_4285);
    s.SetDataRate(QStringLiteral("1200"));
    s.SetInterleaverMode(QStringLiteral("short"));
    return s;
}

MILSTD_Settings goldenMilstd()
{
    return milstd(MILSTD_Settings::ModType_188_110B_App_C);
}

General_Settings goldenGeneral()
{
    General_Settings g;
    g.SetMode(General_Settings::Mode_Mil_Std_188_141B_Appendix_C);
    g.SetModType(General_Settings::ModType_ZVEI_2);
    return g;
}

TransmissionSystem goldenSystem()
{
    Demodulator_Settings d;
    branches().at(Demodulator_Settings::ChoiceDemodulator_Settings_TransmissionSystem)(d);
    return std::as_const(d).GetTransmissionSystem();
}

TransmissionSystemDetail goldenSystemDetail() { return goldenSystem().GetDetail(); }
FSK_SettingsDetail goldenFskDetail() { return fullFsk().GetDetail(); }
ASK_SettingsDetail goldenAskDetail() { return fullAsk().GetDetail(); }
PSK_SettingsDetail goldenPskDetail() { return fullPsk().GetDetail(); }
MPSK_SettingsDetail goldenMpskDetail() { return fullMpsk().GetDetail(); }
MFSK_SettingsDetail goldenMfskDetail() { return fullMfsk().GetDetail(); }
FAX_SettingsDetail goldenFaxDetail() { return fullFax().GetDetail(); }
MT_SettingsDetail goldenMtDetail() { return fullMt().GetDetail(); }
F7W_SettingsDetail goldenF7wDetail() { return fullF7w().GetDetail(); }

} // namespace

// One golden pair of files for every record below Demodulator_Settings, as
// the branch files above, written anew with MORVANE_WRITE_GOLDEN=1.
TEST(DemodulatorGolden, EveryRecordWritesAndReadsItsGoldenFiles)
{
    const std::vector<std::function<void()>> records = {
        golden("decoder", goldenDecoder), golden("channelselection", goldenChannels),
        golden("tonespacing", toneSpacing), golden("vuhf", vuhf),
        golden("fsk_settings", fullFsk), golden("fsk_settingsdetail", goldenFskDetail),
        golden("ask_settings", fullAsk), golden("ask_settingsdetail", goldenAskDetail),
        golden("psk_settings", fullPsk), golden("psk_settingsdetail", goldenPskDetail),
        golden("mpsk_settings", fullMpsk), golden("mpsk_settingsdetail", goldenMpskDetail),
        golden("mfsk_settings", fullMfsk), golden("mfsk_settingsdetail", goldenMfskDetail),
        golden("channelspacing", channelSpacing), golden("morse_settings", goldenMorse),
        golden("mpt_settings", goldenMpt), golden("pocsag_settings", goldenPocsag),
        golden("fax_settings", fullFax), golden("fax_settingsdetail", goldenFaxDetail),
        golden("mt_settings", fullMt), golden("mt_settingsdetail", goldenMtDetail),
        golden("f7w_settings", fullF7w), golden("f7w_settingsdetail", goldenF7wDetail),
        golden("pacclo_settings", goldenPacclo), golden("stanag_settings", goldenStanag),
        golden("milstd_settings", goldenMilstd), golden("general_settings", goldenGeneral),
        golden("transmissionsystem", goldenSystem), golden("transmissionsystemdetail", goldenSystemDetail),
    };
    for (const auto &check : records)
        check();
}
