// Tests of the detection result list, its results, and the list container
// that ties a stored list to the kind of list it is.

#include "recordtestsupport.h"
#include "tags.h"

#include <utility>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::OutOfRangeException;

namespace {

DetectionResult minimalResult(const QString &id = QStringLiteral("det-1"))
{
    DetectionResult r;
    r.SetID(id);
    r.SetType(QStringLiteral("Burst"));
    r.SetFrequency(samples::valueRecord<Frequency>(145525000.0));
    r.SetBandwidth(samples::valueRecord<Bandwidth>(12500.0));
    return r;
}

DetectionResult fullResult()
{
    DetectionResult r = minimalResult(QStringLiteral("det-full"));
    r.SetFrequency(samples::frequency());
    r.SetBandwidth(samples::bandwidth());
    r.SetLevel(-73.46);
    r.SetStartTime(samples::utc(2026, 11, 23, 8, 30, 0, 125));
    r.SetStopTime(samples::utc(2026, 11, 23, 8, 31, 2, 7));
    r.SetConfidence(-17);
    r.SetFFMSettingsWithAnalogDemod(QStringLiteral("FM"));
    r.SetModulation(QStringLiteral("2-FSK"));
    r.SetTransmissionSystem(QString::fromUtf8("POCSAG \xc3\xa4"));
    r.SetDemodulatorRawParameters(QLatin1String(""));
    r.SetBaudrate(samples::baudrate());
    r.SetShift(samples::shift());
    r.SetDecoder(QStringLiteral("pager"));
    r.SetAzimuth(271.5);
    r.SetDFQuality(88.25);
    r.SetLongitude(-180.0);
    r.SetLatitude(90.0);
    return r;
}

DetectionResultList scalars(DetectionResultList::Usage usage, const QString &comment, const QString &id,
                            const QString &type)
{
    DetectionResultList l;
    l.SetUsage(usage);
    l.SetComment(comment);
    l.SetID(id);
    l.SetType(type);
    return l;
}

DetectionResultList scalarsOnly()
{
    return scalars(DetectionResultList::Usage_Suppress, QLatin1String(""), QStringLiteral("empty"),
                   QStringLiteral("none"));
}

DetectionResultList fullList()
{
    DetectionResultList l = scalars(DetectionResultList::Usage_Resultlist, QStringLiteral("night watch"),
                                    QStringLiteral("list-7"), QStringLiteral("Scan"));
    l.AppendDetectionResult(fullResult());
    l.AppendDetectionResult(minimalResult(QStringLiteral("det-2")));
    return l;
}

} // namespace

// --- DetectionResultList ----------------------------------------------------------------------

TEST(DetectionResultList, UsageNamesAndTranslationContext)
{
    using L = DetectionResultList;
    checkEnumeration({"Undefined", "Resultlist", "NotOfInterest", "Target", "WellKnown", "Known", "Matching",
                      "Notepad", "MemoryScan", "Suppress"},
                     &L::GetUsages, &L::GetGUIUsages, &L::UsageToName, &L::NameToUsage, &L::IsValidUsage);
    EXPECT_EQ(L::tr("Known"), QStringLiteral("Known"));
    EXPECT_EQ(L::trUtf8("Known"), QStringLiteral("Known"));
    EXPECT_EQ(L::GetId(), qint64(0x42672caf));
    EXPECT_EQ(DetectionResult::GetId(), qint64(qint32(0x1f69e6ef)));
}

TEST(DetectionResultList, FullListRoundTripsInBothForms)
{
    const DetectionResultList list = fullList();
    roundTrip(list);
    const QByteArray body = bodyOf(list.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagUsage, TagComment, TagID, TagType, TagResults}));
}

TEST(DetectionResultList, WithoutItemsWritesItsFourScalarsOnly)
{
    const DetectionResultList list = scalarsOnly();
    EXPECT_EQ(compactXml(list), QStringLiteral("<DetectionResultList><Usage>Suppress</Usage><Comment></Comment>"
                                               "<ID>empty</ID><Type>none</Type></DetectionResultList>"));
    // In binary as well: no frame for the empty result vector.
    EXPECT_EQ(tagsOf(bodyOf(list.GetBinaryRepresentationAsQByteArray())),
              (QVector<quint32>{TagUsage, TagComment, TagID, TagType}));
    roundTrip(list);
}

TEST(DetectionResultList, AllFourScalarsAreMandatory)
{
    expectCheckNamesSpoiled<DetectionResultList>(scalarsOnly(), "DetectionResultList", {
        {"Usage", [](DetectionResultList &l) { l.ResetUsage(); }},
        {"Comment", [](DetectionResultList &l) { l.ResetComment(); }},
        {"ID", [](DetectionResultList &l) { l.ResetID(); }},
        {"Type", [](DetectionResultList &l) { l.SetType(QString()); }},
    });
}

TEST(DetectionResultList, AppendRefusesAnIncompleteResult)
{
    DetectionResultList list = scalarsOnly();
    DetectionResult incomplete;
    incomplete.SetID(QStringLiteral("only an id"));
    EXPECT_THROW_MESSAGE(list.AppendDetectionResult(incomplete), IncompleteDefinitionException,
                         "DetectionResultList: Tried to append not completely defined or invalid item DetectionResult.");
    EXPECT_TRUE(std::as_const(list).GetDetectionResult().isEmpty());
    list.SetValidate(false);
    list.AppendDetectionResult(incomplete);
    EXPECT_EQ(std::as_const(list).GetDetectionResult().size(), 1);
}

TEST(DetectionResultList, NonConstGetterMarksTheVectorPresent)
{
    DetectionResultList list;
    EXPECT_FALSE(list.IsDetectionResultSet());
    list.GetDetectionResult();
    EXPECT_TRUE(list.IsDetectionResultSet());
}

TEST(DetectionResultList, UnknownBinaryTagIsSkipped)
{
    const DetectionResultList list = fullList();
    const QByteArray body = bodyOf(list.GetBinaryRepresentationAsQByteArray());
    const QVector<Frame> frames = splitFrames(body);
    QByteArray spliced;
    for (int i = 0; i < frames.size(); ++i) {
        if (i == 2)
            spliced += frame(0x12345678u, QByteArray("\x01\x02\x03", 3));
        spliced += frame(frames.at(i).tag, frames.at(i).value);
    }
    DetectionResultList read;
    QByteArray rep = representation(DetectionResultList::GetId(), spliced);
    ASSERT_TRUE(read.SetBinaryRepresentation(rep));
    EXPECT_EQ(read, list);
}

TEST(DetectionResultList, ResetToDefaultAppliesTheScalarDefaults)
{
    DetectionResultList list = fullList();
    list.SetDefaultComment(QStringLiteral("default comment"));
    list.SetDefaultUsage(DetectionResultList::Usage_Known);
    list.ResetToDefault();
    EXPECT_EQ(list.GetComment(), QStringLiteral("default comment"));
    EXPECT_EQ(list.GetUsage(), DetectionResultList::Usage_Known);
    EXPECT_FALSE(list.IsIDSet());
    EXPECT_TRUE(std::as_const(list).GetDetectionResult().isEmpty());
}

// --- DetectionResult ----------------------------------------------------------------------------

TEST(DetectionResult, FullResultRoundTripsInBothForms)
{
    roundTrip(fullResult());
    roundTrip(minimalResult());
}

TEST(DetectionResult, ConfidenceTravelsAsARawIntegerInBinaryAndAsDecimalInXml)
{
    const DetectionResult result = fullResult();
    const QByteArray body = bodyOf(result.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(valueOf(body, TagConfidence), be32(quint32(-17)));
    EXPECT_TRUE(compactXml(result).contains(QStringLiteral("<Confidence>-17</Confidence>")));
    EXPECT_EQ(valueOf(body, TagLongitude), utf8Value(QStringLiteral("-180.000000")));
    EXPECT_TRUE(compactXml(result).contains(QStringLiteral("<Latitude>90.000000</Latitude>")));
    EXPECT_TRUE(compactXml(result).contains(QStringLiteral("<Level>-73.46</Level>")));
}

TEST(DetectionResult, CoordinatesAcceptTheirClosedBoundsAndRefuseBeyond)
{
    DetectionResult r = minimalResult();
    r.SetLongitude(-180.0);
    r.SetLatitude(90.0);
    r.SetLongitude(180.0);
    r.SetLatitude(-90.0);
    EXPECT_NO_THROW(r.Check());
    EXPECT_THROW_MESSAGE(r.SetLongitude(180.5), OutOfRangeException,
                         "Parameters for m_longitude are not set within range (-180, 180) in 'DetectionResult'.");
    EXPECT_THROW_MESSAGE(r.SetLatitude(-90.01), OutOfRangeException,
                         "Parameters for m_latitude are not set within range (-90, 90) in 'DetectionResult'.");
    EXPECT_EQ(r.GetLongitude(), 180.0);
    EXPECT_EQ(r.GetLatitude(), -90.0);
}

TEST(DetectionResult, CheckTakesTheOptionalMembersFirstAndIdAndTypeLast)
{
    DetectionResult r;
    r.SetValidate(false);
    r.SetModulation(QString());
    r.SetLatitude(100.0);
    // Nothing of ID, Type, Frequency or Bandwidth is set: the strings set to
    // null come first, then the coordinates, and the mandatory strings last.
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "DetectionResult: Please set Modulation properly.");
    r.SetModulation(QStringLiteral("AM"));
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "DetectionResult: Please set Latitude properly.");
    r.SetLatitude(10.0);
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "DetectionResult: Please set ID properly.");
    r.SetID(QStringLiteral("x"));
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "DetectionResult: Please set Type properly.");
    r.SetType(QStringLiteral("y"));
    // Frequency and Bandwidth are checked only when set: Check passes.
    r.SetValidate(true);
    EXPECT_NO_THROW(r.Check());
    EXPECT_FALSE(r.HasData());
}

TEST(DetectionResult, WritingWithoutFrequencyOrBandwidthFailsUnderValidation)
{
    DetectionResult r = minimalResult();
    r.ResetFrequency();
    QString text;
    QXmlStreamWriter writer(&text);
    EXPECT_THROW_MESSAGE(r.GetXml(writer), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'DetectionResult'.");
    EXPECT_TRUE(text.isEmpty());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    EXPECT_THROW_MESSAGE(r.GetBinary(stream, int(DetectionResult::GetId()), true), IncompleteDefinitionException,
                         "Parameters for Frequency are not set properly in 'DetectionResult'.");

    r = minimalResult();
    r.ResetBandwidth();
    EXPECT_THROW_MESSAGE(r.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Bandwidth are not set properly in 'DetectionResult'.");
}

TEST(DetectionResult, WithValidationOffUnsetFrequencyAndBandwidthAreNotWritten)
{
    DetectionResult r;
    r.SetValidate(false);
    r.SetID(QStringLiteral("a"));
    EXPECT_EQ(compactXml(r), QStringLiteral("<DetectionResult><ID>a</ID><Type></Type></DetectionResult>"));
    const QByteArray body = bodyOf(r.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagID, TagType}));
    r.SetBandwidth(samples::bandwidth());
    EXPECT_TRUE(hasTag(bodyOf(r.GetBinaryRepresentationAsQByteArray()), TagResultBandwidth));
}

TEST(DetectionResult, NullStringsAreRefusedAndEmptyOnesTaken)
{
    DetectionResult r;
    EXPECT_THROW_MESSAGE(r.SetDecoder(QString()), OutOfRangeException, "DetectionResult: Please set Decoder properly.");
    EXPECT_FALSE(r.IsDecoderSet());
    r.SetDecoder(QLatin1String(""));
    EXPECT_TRUE(r.IsDecoderSet());
}

// --- FrequencyStoreListHelper --------------------------------------------------------------------

TEST(FrequencyStoreListHelper, ListTypeNames)
{
    using H = FrequencyStoreListHelper;
    checkEnumeration({"NotePad", "Suppress", "TargetList", "DataResults", "NOIFrequencies", "DetectionConventional",
                      "MemoryScan", "DetectionResult", "TransducerList"},
                     &H::GetListTypes, &H::GetGUIListTypes, &H::ListTypeToName, &H::NameToListType,
                     &H::IsValidListType);
    H helper;
    EXPECT_NE(helper.NameToListType(QStringLiteral("NOIFrequencies")),
              helper.NameToListType(QStringLiteral("Suppress")));
    EXPECT_EQ(helper.NameToListType(QStringLiteral("notepad")), H::ListType(-1));
    EXPECT_EQ(H::tr("NotePad"), QStringLiteral("NotePad"));
    EXPECT_EQ(H::GetId(), qint64(qint32(0xe9f4342d)));
}

TEST(FrequencyStoreListHelper, FreshRecordHasNoBlockAndNoData)
{
    FrequencyStoreListHelper helper;
    EXPECT_FALSE(helper.IsInitialized());
    EXPECT_FALSE(helper.HasData());
    EXPECT_FALSE(helper.AnyData());
    EXPECT_FALSE(helper.IsInitialized());
    const QString name = helper.GetListTypeAsString();
    EXPECT_TRUE(helper.IsInitialized());
    EXPECT_TRUE(name.isEmpty());
    EXPECT_EQ(helper.GetListType(), FrequencyStoreListHelper::ListType(-1));
    EXPECT_EQ(helper.GetDefaultListType(), FrequencyStoreListHelper::ListType(-1));
    EXPECT_EQ(helper.GetInvalidListType(), FrequencyStoreListHelper::ListType(-1));
}

TEST(FrequencyStoreListHelper, NonConstListGetterMarksTheListSet)
{
    FrequencyStoreListHelper helper;
    helper.SetValidate(false);
    helper.GetFrequencyStoreList();
    EXPECT_TRUE(helper.IsFrequencyStoreListSet());
    EXPECT_EQ(compactXml(helper), QStringLiteral("<FrequencyStoreListHelper><ListType></ListType>"
                                                 "<FrequencyStoreList Version=\"1.2\"/></FrequencyStoreListHelper>"));
    FrequencyStoreListHelper other;
    other.GetDetectionResultList();
    EXPECT_TRUE(other.IsDetectionResultListSet());
    EXPECT_FALSE(other.IsFrequencyStoreListSet());
}

TEST(FrequencyStoreListHelper, ListsWithoutATypeAreDataButNotComplete)
{
    FrequencyStoreListHelper helper;
    helper.SetDetectionResultList(scalarsOnly());
    EXPECT_TRUE(helper.AnyData());
    EXPECT_FALSE(helper.HasData());
    EXPECT_THROW_MESSAGE(helper.Check(), OutOfRangeException, "FrequencyStoreListHelper: Please set ListType properly.");
    helper.SetListType(FrequencyStoreListHelper::ListType_DetectionResult);
    EXPECT_TRUE(helper.HasData());
    EXPECT_NO_THROW(helper.Check());
}

TEST(FrequencyStoreListHelper, SetListTypeRefusesValuesOutsideTheTable)
{
    FrequencyStoreListHelper helper;
    EXPECT_THROW_MESSAGE(helper.SetListType(FrequencyStoreListHelper::ListType(9)), OutOfRangeException,
                         "enum is not valid (classname=FrequencyStoreListHelper,membername=m_listType)");
    EXPECT_FALSE(helper.IsListTypeSet());
    helper.SetValidate(false);
    helper.SetListType(FrequencyStoreListHelper::ListType(9));
    EXPECT_TRUE(helper.IsListTypeSet());
    EXPECT_EQ(int(helper.GetListType()), 9);
    EXPECT_THROW_MESSAGE(helper.Check(), OutOfRangeException, "FrequencyStoreListHelper: Please set ListType properly.");
}

TEST(FrequencyStoreListHelper, WritesTypeThenListThenResultsAndReadsThemBack)
{
    FrequencyStoreListHelper helper;
    helper.SetListType(FrequencyStoreListHelper::ListType_MemoryScan);
    FrequencyStoreList list;
    list.SetName(QStringLiteral("watch"));
    FrequencyStoreEntry entry;
    entry.SetType(QStringLiteral("Voice"));
    entry.GetFFM_Settings().SetFrequency(samples::valueRecord<Frequency>(100.0));
    entry.GetFFM_Settings().SetIFBandwidth(samples::valueRecord<IFBandwidth>(9.0));
    list.AppendFrequencyStoreEntry(entry);
    helper.SetFrequencyStoreList(list);
    helper.SetDetectionResultList(fullList());
    roundTrip(helper);
    const QByteArray body = bodyOf(helper.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(tagsOf(body), (QVector<quint32>{TagListType, TagHelperList, TagHelperResults}));
    EXPECT_EQ(valueOf(body, TagListType), utf8Value(QStringLiteral("MemoryScan")));

    // Unknown elements are skipped to their end.
    FrequencyStoreListHelper read;
    ASSERT_TRUE(read.SetXmlString(QStringLiteral("<FrequencyStoreListHelper><Extra><ListType>Suppress</ListType>"
                                                 "</Extra><ListType>NotePad</ListType></FrequencyStoreListHelper>"),
                                  true));
    EXPECT_EQ(read.GetListType(), FrequencyStoreListHelper::ListType_NotePad);
}

TEST(FrequencyStoreListHelper, EqualityLooksAtSetMembersOnly)
{
    FrequencyStoreListHelper a;
    FrequencyStoreListHelper b;
    EXPECT_EQ(a, b);
    b.SetDefaultListType(FrequencyStoreListHelper::ListType_Suppress);
    EXPECT_EQ(a, b);
    a.SetListType(FrequencyStoreListHelper::ListType_Suppress);
    EXPECT_NE(a, b);
    b.SetListType(FrequencyStoreListHelper::ListType_Suppress);
    EXPECT_EQ(a, b);
    a.GetFrequencyStoreList();
    EXPECT_NE(a, b);
}

TEST(FrequencyStoreListHelper, ResetToDefaultAppliesAValidDefaultType)
{
    FrequencyStoreListHelper helper;
    helper.SetDefaultListType(FrequencyStoreListHelper::ListType_TargetList);
    helper.ResetToDefault();
    EXPECT_TRUE(helper.IsListTypeSet());
    EXPECT_EQ(helper.GetListType(), FrequencyStoreListHelper::ListType_TargetList);
    FrequencyStoreListHelper invalid;
    invalid.SetDefaultListType(FrequencyStoreListHelper::ListType(12));
    invalid.ResetToDefault();
    EXPECT_FALSE(invalid.IsListTypeSet());
}
