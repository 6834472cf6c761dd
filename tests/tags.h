#ifndef MORVANE_TESTS_TAGS_H
#define MORVANE_TESTS_TAGS_H

// The binary tags of the members, written down here once, apart from the
// schema, so that the tests check the tags the generated records write.

#include <QtCore/QtGlobal>

namespace MorvaneTest {

// FrequencyStoreList
constexpr quint32 TagName = 0x58d44d66u;
constexpr quint32 TagUsage = 0x5f706838u;
constexpr quint32 TagTimstamp = 0xd1e86c7au;
constexpr quint32 TagTargetareas = 0xa6a0a0d8u;
constexpr quint32 TagEntries = 0xd7fbf9b4u;

// FrequencyStoreEntry
constexpr quint32 TagID = 0xd22ac01eu;
constexpr quint32 TagType = 0xfb133431u;
constexpr quint32 TagAntenna = 0xdb8cc823u;
constexpr quint32 TagComment = 0x372d9aa1u;
constexpr quint32 TagFFM = 0x73e5716cu;
constexpr quint32 TagShortTime = 0x40bb687cu;
constexpr quint32 TagAdditionalInfo = 0x4b815a72u;

// FFM_Settings, PScanSettings and FFM_SettingsDetail
constexpr quint32 TagFrequency = 0x33f82dc2u;
constexpr quint32 TagIFBandwidth = 0x05471606u;
constexpr quint32 TagIFStep = 0x2a8f8d34u;
constexpr quint32 TagIFStepAuto = 0xb90e5000u;
constexpr quint32 TagBandwidthMode = 0xe918bb22u;
constexpr quint32 TagAnalogDemod = 0xf378d1fcu;
constexpr quint32 TagLevel = 0x7e52aa12u;
constexpr quint32 TagUpperLevel = 0x15258bc5u;
constexpr quint32 TagFFMDetail = 0x76b9942fu;
constexpr quint32 TagTunerMode = 0x32f53f80u;
constexpr quint32 TagPScan = 0xb4b09e0au;
constexpr quint32 TagStartFrequency = 0x2d99dcb9u;
constexpr quint32 TagStopFrequency = 0x7adc955au;
constexpr quint32 TagFrequencyStep = 0xdb4c6288u;
constexpr quint32 TagActive = 0x16742428u;
constexpr quint32 TagChannelNo = 0xf7a248e7u;
constexpr quint32 TagSquelchValue = 0xefc6f156u;
constexpr quint32 TagMGCValue = 0xf88ca827u;
constexpr quint32 TagGainCtrl = 0xa9fdebe7u;

// ShortTime_Settings, ShortTime_SettingsRange, ShortTime_SettingsDetail and the value records
constexpr quint32 TagHopsPerSecond = 0x175b1b99u;
constexpr quint32 TagUseHopsPerSecond = 0xfce22e6eu;
constexpr quint32 TagRange = 0x7f0007a7u;
constexpr quint32 TagSignalLength = 0xcdcfa688u;
constexpr quint32 TagBandwidth = 0xbeeba168u;
constexpr quint32 TagSnapshotLength = 0x69ed2a63u;
constexpr quint32 TagShortTimeDetail = 0x6bebb425u;
constexpr quint32 TagBreak = 0xee5173cdu;
constexpr quint32 TagUse = 0x02a4068au;
constexpr quint32 TagStartFreq = 0xc770aef6u;
constexpr quint32 TagStopFreq = 0xa5947fdbu;
constexpr quint32 TagFreqSpacing = 0x7a039b4fu;
constexpr quint32 TagMin = 0x3f282542u;
constexpr quint32 TagMax = 0xdfaeca08u;
constexpr quint32 TagValue = 0x817e129fu;

// DF_Settings, DF_SettingsDetail and ShapeDetectorSettings
constexpr quint32 TagDFMode = 0x23991af4u;
constexpr quint32 TagDFStep = 0xeb3905a7u;
constexpr quint32 TagFreqSpan = 0x3d21bc53u;
constexpr quint32 TagAveraging = 0x762f6dc0u;
constexpr quint32 TagWorkflow = 0x828b1ef0u;
constexpr quint32 TagActivity = 0xb7ab424cu;
constexpr quint32 TagActivityTrigger = 0x5d7fec78u;
constexpr quint32 TagMethod = 0x7ebe6680u;
constexpr quint32 TagSelectivity = 0x57d5def0u;
constexpr quint32 TagFrequencyOffset = 0xd14e2519u;
constexpr quint32 TagApplicationMode = 0x709f5179u;
constexpr quint32 TagICMMode = 0xfa6c4454u;
constexpr quint32 TagMonitoredVTC = 0x154adc4cu;
constexpr quint32 TagDFDetail = 0x51613717u;
constexpr quint32 TagQualityThreshold = 0xcaeafd4cu;
constexpr quint32 TagLevelThreshold = 0xe49b64e0u;
constexpr quint32 TagElevationMin = 0x4aad0259u;
constexpr quint32 TagElevationMax = 0x02c650efu;
constexpr quint32 TagGenericShape = 0x9e874813u;
constexpr quint32 TagShape = 0xb92679c3u;

// DetectionResultList, DetectionResult and FrequencyStoreListHelper
constexpr quint32 TagResults = 0x98e379cau;
constexpr quint32 TagResultBandwidth = 0xbeeba168u;
constexpr quint32 TagConfidence = 0xd6ae17ceu;
constexpr quint32 TagLongitude = 0x9a94af47u;
constexpr quint32 TagListType = 0xecacf790u;
constexpr quint32 TagHelperList = 0x9eb1cdf4u;
constexpr quint32 TagHelperResults = 0xd9de87e6u;

// FSK_Settings, ToneSpacing, Decoder and ChannelSelection (ToneSpacing's
// Value has the tag of the value records' Value)
constexpr quint32 TagModType = 0x78b606c6u;
constexpr quint32 TagBaudrate = 0x3b2661f4u;
constexpr quint32 TagShift = 0xdf70051au;
constexpr quint32 TagFSKDetail = 0x80ee61e8u;
constexpr quint32 TagTexts = 0x897f023fu;

} // namespace MorvaneTest

#endif
