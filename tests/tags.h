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

// FrequencyStoreEntry's further members. Station is also the tag of the
// stations of FrequencyStoreEntryLocation and LocationResult.
constexpr quint32 TagProfileData = 0xe47ba27cu;
constexpr quint32 TagDemodulator = 0xf9a0ed18u;
constexpr quint32 TagEntryLocation = 0x705b6beau;
constexpr quint32 TagStation = 0x186fdadeu;
constexpr quint32 TagDetection = 0x8c34b28cu;
constexpr quint32 TagResultList = 0x759b0f30u;
constexpr quint32 TagEntryDFSettings = 0xaea5904eu;
constexpr quint32 TagShapeDetector = 0xa1e99122u;

// Profile_Data, PointOfInterest, PointOfInterestLocation and Ellipse (the
// location's Longitude has the tag of DetectionResult's Longitude)
constexpr quint32 TagSignalClass = 0x897df2b4u;
constexpr quint32 TagProfileID = 0x24549df2u;
constexpr quint32 TagTransmissionSystem = 0x82962c06u;
constexpr quint32 TagProfileName = 0x99ea86cau;
constexpr quint32 TagObjectName = 0x71ee423fu;
constexpr quint32 TagPriority = 0x2740aa35u;
constexpr quint32 TagThreatClass = 0x09b460f8u;
constexpr quint32 TagPointOfInterest = 0x9cb77838u;
constexpr quint32 TagDisplayName = 0x652aa635u;
constexpr quint32 TagPointLocation = 0x22e5149au;
constexpr quint32 TagEllipse = 0x2e6477eau;
constexpr quint32 TagRadius = 0x60867f65u;
constexpr quint32 TagLatitude = 0xc0abd4d1u;
constexpr quint32 TagMinRadius = 0x8b1c284au;
constexpr quint32 TagMaxRadius = 0x75a8e814u;
constexpr quint32 TagRotation = 0x5d345b27u;

// FrequencyStoreEntryLocation, Station, DFData and DFDataDetail (element
// "Detail"); Station's Name, Longitude and Latitude, DFData's Frequency and
// Level and the detail's Antenna have the tags of those names above.
// TimeStamp is not FrequencyStoreList's Timstamp.
constexpr quint32 TagLocationResult = 0x70815520u;
constexpr quint32 TagStationID = 0x8959a5aau;
constexpr quint32 TagOWNStation = 0xb209ea12u;
constexpr quint32 TagTimeStamp = 0xef676cc0u;
constexpr quint32 TagDFData = 0xfef7ee6cu;
constexpr quint32 TagPositionSource = 0x9e1d3d9du;
constexpr quint32 TagQuality = 0xc17619a9u;
constexpr quint32 TagAzimuth = 0x1c019d12u;
constexpr quint32 TagDFDataDetail = 0x9cfb1d14u;
constexpr quint32 TagPlotInfo = 0x2238e52au;
constexpr quint32 TagElevation = 0x4e0f98d1u;
constexpr quint32 TagElevationVar = 0x04fc5919u;
constexpr quint32 TagCompass = 0xb11e8572u;
constexpr quint32 TagStdDeviation = 0x81a70d0du;

// Plot, PlotDetail (element "Detail"), FrequencyList and its Value items;
// Plot's Radius and Ellipse have the tags of PointOfInterest's, the Value's
// TimeStamp that of Station's.
constexpr quint32 TagSignalID = 0xeba8c9c3u;
constexpr quint32 TagEmitterID = 0xd6626018u;
constexpr quint32 TagPlotType = 0xe1d9e008u;
constexpr quint32 TagStartTime = 0x6011b461u;
constexpr quint32 TagStopTime = 0x02a42596u;
constexpr quint32 TagFrequencyList = 0x2a730886u;
constexpr quint32 TagPlotDetail = 0x006ebd1du;
constexpr quint32 TagFrequencyListValue = 0xb606c910u;

// Plot_Info, Emissions, Emission, Bursts and Burst
constexpr quint32 TagKVFCLID = 0x0e3f89a7u;
constexpr quint32 TagEmissions = 0x937b2fc2u;
constexpr quint32 TagCount = 0x418a62e8u;
constexpr quint32 TagEmission = 0xae6f8b10u;
constexpr quint32 TagAzimuthVar = 0x41278844u;
constexpr quint32 TagBursts = 0x0b928254u;
constexpr quint32 TagBurst = 0x0db3bf36u;

// LocationResult, LocationResultLocation, LocationResultDetail, Detection
// and ResultList
constexpr quint32 TagDFBandwidth = 0x6f24e1d7u;
constexpr quint32 TagResultLocation = 0x9bef2788u;
constexpr quint32 TagResultDetail = 0xd6b64cecu;
constexpr quint32 TagPlot = 0x18d9e008u;
constexpr quint32 TagReason = 0x59f80ccbu;
constexpr quint32 TagResultTime = 0x313a8551u;

} // namespace MorvaneTest

#endif
