// Tests of the short-time (hop) settings with their range and detail records.

#include "recordtestsupport.h"
#include "tags.h"

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::InvalidXmlException;
using ORBELIN::OutOfRangeException;

namespace {

ShortTime_SettingsRange range(double start, double stop)
{
    ShortTime_SettingsRange r;
    r.SetStartFreq(start);
    r.SetStopFreq(stop);
    return r;
}

ShortTime_SettingsDetail fullDetail()
{
    ShortTime_SettingsDetail d;
    d.SetAnalysisDepth("normal");
    d.SetNoiseLevel(-100.0);
    d.SetNoiseLevelMode("fixed");
    d.SetOperatingMode("search");
    d.SetSignalLevelMax(-20.5);
    d.SetSNRMin(10.25);
    return d;
}

ShortTime_Settings fullSettings()
{
    ShortTime_Settings s;
    s.SetHopsPerSecond(312.5);
    s.SetUseHopsPerSecond(false);
    ShortTime_SettingsRange r = range(30000000.0, 88000000.0);
    r.SetFreqSpacing(12500.0);
    r.SetUse(false);
    s.SetRange(r);
    SignalLength l;
    l.SetMin(0.01);
    l.SetMax(0.5);
    s.SetSignalLength(l);
    Bandwidth b;
    b.SetValue(25000.0);
    b.SetMax(30000.0);
    s.SetBandwidth(b);
    s.SetSnapshotLength(2.25);
    s.SetDetail(fullDetail());
    s.SetBreak(0.75);
    for (double v : {30100000.0, 45000000.0, 87950000.0, 30100000.0}) {
        Frequency f = samples::valueRecord<Frequency>(v);
        f.SetUse(v > 40000000.0);
        s.AppendFrequency(f);
    }
    return s;
}

QString settingsDocument(const QString &content)
{
    return QStringLiteral("<ShortTime_Settings>%1</ShortTime_Settings>").arg(content);
}

} // namespace

// --- ShortTime_Settings ------------------------------------------------------------------------

TEST(ShortTimeSettings, HopsPerSecondHasEightDecimals)
{
    ShortTime_Settings s;
    s.SetHopsPerSecond(0.125);
    EXPECT_EQ(QString("<ShortTime_Settings><HopsPerSecond>0.12500000</HopsPerSecond></ShortTime_Settings>"),
              compactXml(s));
    const QByteArray body = bodyOf(s.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(utf8Value("0.12500000"), valueOf(body, TagHopsPerSecond));
    s.SetHopsPerSecond(1.0 / 3.0);
    EXPECT_TRUE(compactXml(s).contains("<HopsPerSecond>0.33333333</HopsPerSecond>"));
}

TEST(ShortTimeSettings, OtherNumbersHaveTwoDecimals)
{
    ShortTime_Settings s;
    s.SetSnapshotLength(1.5);
    s.SetBreak(0.125);
    EXPECT_EQ(QString("<ShortTime_Settings><SnapshotLength>1.50</SnapshotLength><Break>0.13</Break></ShortTime_Settings>"),
              compactXml(s));
}

TEST(ShortTimeSettings, NoFrequencyEntriesNoFrequencyElement)
{
    ShortTime_Settings s;
    s.SetBreak(1.0);
    const QString xml = compactXml(s);
    EXPECT_FALSE(xml.contains("Frequency")) << xml.toStdString();
    // The binary form keeps the frame with a count of 0.
    const QByteArray body = bodyOf(s.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(QByteArray::fromHex("33f82dc2" "00000004" "00000000"), frame(TagFrequency, valueOf(body, TagFrequency)));
    // A presence bit with an empty vector writes no element either.
    s.GetFrequency();
    EXPECT_TRUE(s.IsFrequencySet());
    EXPECT_FALSE(compactXml(s).contains("Frequency"));
}

TEST(ShortTimeSettings, SeveralFrequenciesInOrder)
{
    ShortTime_Settings s;
    s.AppendFrequency(samples::valueRecord<Frequency>(3.0));
    s.AppendFrequency(samples::valueRecord<Frequency>(1.0));
    s.AppendFrequency(samples::valueRecord<Frequency>(2.0));
    EXPECT_EQ(QString("<ShortTime_Settings><Frequency>3.00</Frequency><Frequency>1.00</Frequency>"
                      "<Frequency>2.00</Frequency></ShortTime_Settings>"),
              compactXml(s));
    const QByteArray value = valueOf(bodyOf(s.GetBinaryRepresentationAsQByteArray()), TagFrequency);
    EXPECT_EQ(be32(3), value.left(4));
    // Each item: its length and its body, without a tag.
    const QByteArray item = frame(TagValue, utf8Value("3.00"));
    EXPECT_EQ(be32(quint32(item.size())) + item, value.mid(4, 4 + item.size()));

    ShortTime_Settings back;
    QByteArray rep = s.GetBinaryRepresentationAsQByteArray();
    ASSERT_TRUE(back.SetBinaryRepresentation(rep));
    ASSERT_EQ(3, back.GetFrequency().size());
    EXPECT_EQ(3.0, back.GetFrequency().at(0).GetValue());
    EXPECT_EQ(1.0, back.GetFrequency().at(1).GetValue());
    EXPECT_EQ(2.0, back.GetFrequency().at(2).GetValue());
}

TEST(ShortTimeSettings, IncompleteFrequencyAppend)
{
    ShortTime_Settings s;
    EXPECT_THROW_MESSAGE(s.AppendFrequency(Frequency()), IncompleteDefinitionException,
                         "ShortTime_Settings: Tried to append not completely defined or invalid item Frequency.");
    EXPECT_EQ(0, s.GetFrequency().size());
    s.SetValidate(false);
    s.AppendFrequency(Frequency());
    EXPECT_EQ(1, s.GetFrequency().size());
    EXPECT_TRUE(s.IsValidFrequency(Frequency()));
    EXPECT_TRUE(s.IsValidFrequency(QVector<Frequency>()));
}

TEST(ShortTimeSettings, IncompleteFrequencyFailsWriting)
{
    ShortTime_Settings s;
    s.SetValidate(false);
    s.AppendFrequency(Frequency());
    s.SetValidate(true);
    EXPECT_THROW(s.GetXmlString(), OutOfRangeException);
    Frequency noValue;
    noValue.SetMin(1.0);
    ShortTime_Settings t;
    t.SetValidate(false);
    t.SetFrequency({noValue});
    t.SetValidate(true);
    EXPECT_THROW_MESSAGE(t.GetXmlString(), OutOfRangeException, "Frequency: Please set Value properly.");
}

TEST(ShortTimeSettings, EmptyUseHopsPerSecondFails)
{
    ShortTime_Settings s;
    EXPECT_THROW_MESSAGE(s.SetXmlString(settingsDocument("<UseHopsPerSecond></UseHopsPerSecond>"), true),
                         InvalidXmlException,
                         "Please set a value or a default for the boolean 'UseHopsPerSecond' in 'ShortTime_Settings'.");
    EXPECT_FALSE(s.IsUseHopsPerSecondSet());
    ShortTime_Settings t;
    ASSERT_TRUE(t.SetXmlString(settingsDocument("<UseHopsPerSecond>False</UseHopsPerSecond>"), true));
    EXPECT_TRUE(t.IsUseHopsPerSecondSet());
    EXPECT_FALSE(t.GetUseHopsPerSecond());
}

TEST(ShortTimeSettings, UnknownElementSkippedWithoutVersion)
{
    ShortTime_Settings s;
    ASSERT_TRUE(s.SetXmlString(settingsDocument("<Extra><Break>9.00</Break></Extra><Break>1.00</Break>"), true));
    EXPECT_EQ(1.0, s.GetBreak());
    ShortTime_Settings t;
    ASSERT_TRUE(t.SetXmlString(settingsDocument("<Extra><Break>9.00</Break></Extra>"), true));
    EXPECT_FALSE(t.IsBreakSet());
    EXPECT_TRUE(t.GetVersion().isEmpty());
}

TEST(ShortTimeSettings, MemberOrderInBothForms)
{
    const ShortTime_Settings s = fullSettings();
    const QByteArray body = bodyOf(s.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{TagHopsPerSecond, TagUseHopsPerSecond, TagRange, TagSignalLength, TagBandwidth,
                                TagSnapshotLength, TagShortTimeDetail, TagBreak, TagFrequency}),
              tagsOf(body));
    EXPECT_EQ(QByteArray::fromHex("00"), valueOf(body, TagUseHopsPerSecond));
    const QString xml = compactXml(s);
    const int hops = xml.indexOf("<HopsPerSecond>");
    const int use = xml.indexOf("<UseHopsPerSecond>");
    const int rangeAt = xml.indexOf("<Range");
    const int signal = xml.indexOf("<SignalLength");
    const int bandwidth = xml.indexOf("<Bandwidth");
    const int snapshot = xml.indexOf("<SnapshotLength>");
    const int detail = xml.indexOf("<Detail>");
    const int brk = xml.indexOf("<Break>");
    const int freq = xml.indexOf("<Frequency");
    EXPECT_TRUE(hops >= 0 && hops < use && use < rangeAt && rangeAt < signal && signal < bandwidth
                && bandwidth < snapshot && snapshot < detail && detail < brk && brk < freq)
        << xml.toStdString();
}

TEST(ShortTimeSettings, FullRoundTrip)
{
    const ShortTime_Settings s = fullSettings();
    ShortTime_Settings fromBinary = roundTrip(s).fromBinary;
    fromBinary.GetFrequency()[3].SetUse(true);
    EXPECT_FALSE(fromBinary == s);
}

TEST(ShortTimeSettings, HasDataWithAnyBlock)
{
    ShortTime_Settings s;
    EXPECT_FALSE(s.HasData());
    EXPECT_FALSE(s.AnyData());
    s.SetBreak(0.0);
    EXPECT_TRUE(s.HasData());
    EXPECT_TRUE(s.AnyData());
}

TEST(ShortTimeSettings, NestedRecordsAreChecked)
{
    ShortTime_Settings s;
    s.SetRange(ShortTime_SettingsRange());
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "Range: Please set StartFreq properly.");
    ShortTime_Settings t;
    ShortTime_SettingsDetail d = fullDetail();
    d.ResetSNRMin();
    t.SetDetail(d);
    EXPECT_THROW_MESSAGE(t.Check(), OutOfRangeException, "Detail: Please set SNRMin properly.");
    ShortTime_Settings u;
    u.SetSignalLength(SignalLength());
    EXPECT_THROW_MESSAGE(u.Check(), OutOfRangeException, "SignalLength: Please set Min properly.");
}

// --- ShortTime_SettingsRange -------------------------------------------------------------------

TEST(ShortTimeRange, UseIsWrittenFirst)
{
    ShortTime_SettingsRange r = range(1.0, 2.0);
    r.SetFreqSpacing(0.5);
    r.SetUse(false);
    EXPECT_EQ(QString("<Range Use=\"false\"><StartFreq>1.00</StartFreq><StopFreq>2.00</StopFreq>"
                      "<FreqSpacing>0.50</FreqSpacing></Range>"),
              compactXml(r));
    const QByteArray rep = r.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(QByteArray::fromHex("40561990"), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ((QVector<quint32>{TagUse, TagStartFreq, TagStopFreq, TagFreqSpacing}), tagsOf(body));
    EXPECT_EQ(QByteArray::fromHex("02a4068a" "00000001" "00"), body.left(9));
}

TEST(ShortTimeRange, UseDefaultsToTrue)
{
    ShortTime_SettingsRange r = range(1.0, 2.0);
    EXPECT_TRUE(r.GetDefaultUse());
    EXPECT_TRUE(r.GetUse());
    EXPECT_FALSE(r.IsUseSet());
    EXPECT_EQ(QString("<Range><StartFreq>1.00</StartFreq><StopFreq>2.00</StopFreq></Range>"), compactXml(r));
    r.ResetToDefault();
    EXPECT_TRUE(r.IsUseSet());
    EXPECT_TRUE(r.GetUse());
    EXPECT_FALSE(r.IsStartFreqSet());
}

TEST(ShortTimeRange, UseAcceptedAsAttributeAndAsElement)
{
    ShortTime_SettingsRange a;
    ASSERT_TRUE(a.SetXmlString("<Range Use=\"FALSE\"><StartFreq>1</StartFreq><StopFreq>2</StopFreq></Range>", true));
    EXPECT_TRUE(a.IsUseSet());
    EXPECT_FALSE(a.GetUse());
    EXPECT_EQ(1.0, a.GetStartFreq());

    ShortTime_SettingsRange b;
    ASSERT_TRUE(b.SetXmlString("<Range><StartFreq>1</StartFreq><Use>0</Use><StopFreq>2</StopFreq></Range>", true));
    EXPECT_TRUE(b.IsUseSet());
    EXPECT_FALSE(b.GetUse());
    EXPECT_EQ(2.0, b.GetStopFreq());

    ShortTime_SettingsRange c;
    ASSERT_TRUE(c.SetXmlString("<Range Use=\"\"><StartFreq>1</StartFreq><StopFreq>2</StopFreq></Range>", true));
    EXPECT_TRUE(c.IsUseSet());
    EXPECT_TRUE(c.GetUse());

    ShortTime_SettingsRange d;
    ASSERT_TRUE(d.SetXmlString("<Range><Use>no</Use></Range>", true));
    EXPECT_TRUE(d.GetUse());
}

TEST(ShortTimeRange, CheckNamesStartAndStop)
{
    ShortTime_SettingsRange r;
    EXPECT_FALSE(r.HasData());
    r.SetFreqSpacing(1.0);
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "Range: Please set StartFreq properly.");
    r.SetStartFreq(1.0);
    EXPECT_FALSE(r.HasData());
    EXPECT_THROW_MESSAGE(r.Check(), OutOfRangeException, "Range: Please set StopFreq properly.");
    r.SetStopFreq(2.0);
    EXPECT_TRUE(r.HasData());
    EXPECT_NO_THROW(r.Check());
}

TEST(ShortTimeRange, BinaryInAnyOrder)
{
    const QByteArray body = frame(TagStopFreq, utf8Value("20.00")) + frame(TagUse, boolValue(false))
        + frame(TagStartFreq, utf8Value("10.00"));
    QByteArray rep = representation(ShortTime_SettingsRange::GetId(), body);
    ShortTime_SettingsRange r;
    ASSERT_TRUE(r.SetBinaryRepresentation(rep));
    EXPECT_EQ(10.0, r.GetStartFreq());
    EXPECT_EQ(20.0, r.GetStopFreq());
    EXPECT_FALSE(r.GetUse());
    EXPECT_TRUE(r.IsUseSet());
}

// --- ShortTime_SettingsDetail -----------------------------------------------------------------

TEST(ShortTimeDetail, AllSixMandatory)
{
    using D = ShortTime_SettingsDetail;
    struct Case
    {
        const char *name;
        void (D::*reset)();
    };
    const Case cases[] = {
        {"AnalysisDepth", &D::ResetAnalysisDepth},   {"NoiseLevel", &D::ResetNoiseLevel},
        {"NoiseLevelMode", &D::ResetNoiseLevelMode}, {"OperatingMode", &D::ResetOperatingMode},
        {"SignalLevelMax", &D::ResetSignalLevelMax}, {"SNRMin", &D::ResetSNRMin},
    };
    for (const Case &c : cases) {
        D d = fullDetail();
        EXPECT_TRUE(d.HasData());
        EXPECT_NO_THROW(d.Check());
        (d.*c.reset)();
        EXPECT_FALSE(d.HasData()) << c.name;
        EXPECT_TRUE(d.AnyData());
        EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, QStringLiteral("Detail: Please set %1 properly.").arg(c.name));
    }
}

TEST(ShortTimeDetail, NullStringsRefused)
{
    ShortTime_SettingsDetail d;
    EXPECT_THROW_MESSAGE(d.SetOperatingMode(QString()), OutOfRangeException, "Detail: Please set OperatingMode properly.");
    d.SetOperatingMode("");
    EXPECT_TRUE(d.IsOperatingModeSet());
    ShortTime_SettingsDetail lax = fullDetail();
    lax.SetValidate(false);
    lax.SetNoiseLevelMode(QString());
    EXPECT_THROW_MESSAGE(lax.Check(), OutOfRangeException, "Detail: Please set NoiseLevelMode properly.");
}

TEST(ShortTimeDetail, WrittenInTableOrder)
{
    EXPECT_EQ(QString("<Detail><AnalysisDepth>normal</AnalysisDepth><NoiseLevel>-100.00</NoiseLevel>"
                      "<NoiseLevelMode>fixed</NoiseLevelMode><OperatingMode>search</OperatingMode>"
                      "<SignalLevelMax>-20.50</SignalLevelMax><SNRMin>10.25</SNRMin></Detail>"),
              compactXml(fullDetail()));
    ShortTime_SettingsDetail d;
    EXPECT_THROW_MESSAGE(compactXml(d), OutOfRangeException, "Detail: Please set AnalysisDepth properly.");
    d.SetValidate(false);
    EXPECT_EQ(QString("<Detail><AnalysisDepth></AnalysisDepth><NoiseLevel>0.00</NoiseLevel>"
                      "<NoiseLevelMode></NoiseLevelMode><OperatingMode></OperatingMode>"
                      "<SignalLevelMax>0.00</SignalLevelMax><SNRMin>0.00</SNRMin></Detail>"),
              compactXml(d));
}

TEST(ShortTimeDetail, SignalLengthAndBandwidthInBinary)
{
    ShortTime_Settings s;
    SignalLength l;
    l.SetMin(1.0);
    l.SetMax(2.0);
    l.SetUse(true);
    s.SetSignalLength(l);
    const QByteArray length = valueOf(bodyOf(s.GetBinaryRepresentationAsQByteArray()), TagSignalLength);
    EXPECT_EQ((QVector<quint32>{TagUse, TagMin, TagMax}), tagsOf(length));
}
