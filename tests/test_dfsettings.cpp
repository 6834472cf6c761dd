// Tests of the direction-finding settings, their detail record and the shape
// detector settings.

#include "recordtestsupport.h"
#include "tags.h"

#include <type_traits>

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::InvalidXmlException;
using ORBELIN::OutOfRangeException;

namespace {

DF_Settings minimalDF()
{
    DF_Settings s;
    s.SetBandwidth(samples::valueRecord<Bandwidth>(10000.0));
    s.SetDFMode(DF_Settings::DFMode_Norm);
    s.SetAveraging(4.0);
    return s;
}

DF_SettingsDetail fullDFDetail()
{
    DF_SettingsDetail d;
    d.SetQualityThreshold(60);
    d.SetLevelThreshold(-90.5);
    d.SetElevationMin(-5);
    d.SetElevationMax(85);
    return d;
}

DF_Settings fullDF()
{
    DF_Settings s = minimalDF();
    s.GetBandwidth().SetMin(5000.0);
    s.GetBandwidth().SetUse(false);
    s.SetDFStep(12.5);
    s.SetFreqSpan(1000000.0);
    s.SetWorkflow(DF_Settings::Workflow_Single_shot);
    s.SetActivity(DF_Settings::Activity_No_DF_Locate);
    s.SetActivityTrigger(DF_Settings::ActivityTrigger_User_request);
    s.SetMethod(DF_Settings::Method_VECTORMATCHING);
    s.SetSelectivity(DF_Settings::Selectivity_SHARP);
    s.SetFrequencyOffset(-250.0);
    s.SetApplicationMode("VHF");
    s.SetICMMode("");
    s.SetMonitoredVTCFrequencies("121.5;243.0");
    s.SetDetail(fullDFDetail());
    return s;
}

QString dfDocument(const QString &versionAttribute, const QString &content)
{
    return QStringLiteral("<DF_Settings%1><Bandwidth>10000.00</Bandwidth><DFMode>Norm</DFMode>"
                          "<Averaging>4.00</Averaging>%2</DF_Settings>")
        .arg(versionAttribute, content);
}

} // namespace

// --- enumerations -------------------------------------------------------------------------

TEST(DFSettingsEnum, NameLists)
{
    using S = DF_Settings;
    checkEnumeration({"Cont", "Norm", "Gate"}, &S::GetDFModes, &S::GetGUIDFModes, &S::DFModeToName,
                     &S::NameToDFMode, &S::IsValidDFMode);
    checkEnumeration({"Continuous", "Single shot"}, &S::GetWorkflows, &S::GetGUIWorkflows, &S::WorkflowToName,
                     &S::NameToWorkflow, &S::IsValidWorkflow);
    checkEnumeration({"No DF/Locate", "DF allowed", "Locate allowed"}, &S::GetActivitys, &S::GetGUIActivitys,
                     &S::ActivityToName, &S::NameToActivity, &S::IsValidActivity);
    checkEnumeration({"Frequency change", "User request"}, &S::GetActivityTriggers,
                     &S::GetGUIActivityTriggers, &S::ActivityTriggerToName, &S::NameToActivityTrigger,
                     &S::IsValidActivityTrigger);
    checkEnumeration({"AUTO", "WATSONWATT", "CORRELATION", "SUPERRESOLUTION", "VECTORMATCHING"}, &S::GetMethods,
                     &S::GetGUIMethods, &S::MethodToName, &S::NameToMethod, &S::IsValidMethod);
    checkEnumeration({"AUTO", "NORMAL", "NARROW", "SHARP"}, &S::GetSelectivitys, &S::GetGUISelectivitys,
                     &S::SelectivityToName, &S::NameToSelectivity, &S::IsValidSelectivity);
}

TEST(DFSettingsEnum, MethodAutoAndVectorMatching)
{
    DF_Settings s;
    EXPECT_EQ(0, int(s.NameToMethod("AUTO")));
    EXPECT_EQ(4, int(s.NameToMethod("VECTORMATCHING")));
    EXPECT_EQ(QString("VECTORMATCHING"), s.MethodToName(DF_Settings::Method(4)));
}

TEST(DFSettingsEnum, SelectivityAndMethodHaveTheirOwnAuto)
{
    static_assert(!std::is_same<DF_Settings::Method, DF_Settings::Selectivity>::value,
                  "Method and Selectivity are enumerations of their own");
    DF_Settings s;
    EXPECT_EQ(0, int(s.NameToSelectivity("AUTO")));
    EXPECT_EQ(0, int(s.NameToMethod("AUTO")));
    // Names of one list are not found in the other.
    EXPECT_EQ(-1, int(s.NameToSelectivity("WATSONWATT")));
    EXPECT_EQ(-1, int(s.NameToMethod("SHARP")));
    EXPECT_EQ(QString("NORMAL"), s.SelectivityToName(DF_Settings::Selectivity(1)));
    EXPECT_EQ(QString("WATSONWATT"), s.MethodToName(DF_Settings::Method(1)));
    s.SetInvalidMethod(DF_Settings::Method(17));
    EXPECT_EQ(17, int(s.NameToMethod("SHARP")));
    EXPECT_EQ(-1, int(s.NameToSelectivity("WATSONWATT")));
}

TEST(DFSettingsEnum, GuiListsGoThroughTranslation)
{
    ScopedMarkingTranslator translator;
    ASSERT_TRUE(translator.installed());
    const QStringList gui = DF_Settings::GetGUIActivitys();
    ASSERT_EQ(3, gui.size());
    EXPECT_TRUE(gui.at(0).endsWith("|No DF/Locate"));
    EXPECT_NE(QString("No DF/Locate"), gui.at(0));
    EXPECT_TRUE(DF_Settings::trUtf8("Gate").endsWith("|Gate"));
    EXPECT_EQ((QStringList{"No DF/Locate", "DF allowed", "Locate allowed"}), DF_Settings::GetActivitys());
}

TEST(DFSettingsEnum, InvalidValueMessages)
{
    DF_Settings s;
    EXPECT_THROW_MESSAGE(s.SetDFMode(DF_Settings::DFMode(3)), OutOfRangeException,
                         "enum is not valid (classname=DF_Settings,membername=m_dFMode)");
    EXPECT_THROW_MESSAGE(s.SetWorkflow(DF_Settings::Workflow(-1)), OutOfRangeException,
                         "enum is not valid (classname=DF_Settings,membername=m_workflow)");
    EXPECT_THROW_MESSAGE(s.SetActivityTrigger(DF_Settings::ActivityTrigger(2)), OutOfRangeException,
                         "enum is not valid (classname=DF_Settings,membername=m_activityTrigger)");
    EXPECT_THROW_MESSAGE(s.SetSelectivity(DF_Settings::Selectivity(4)), OutOfRangeException,
                         "enum is not valid (classname=DF_Settings,membername=m_selectivity)");
    EXPECT_FALSE(s.AnyData());
}

TEST(DFSettingsEnum, NoBuiltInDefaults)
{
    DF_Settings s;
    EXPECT_EQ(-1, int(s.GetDefaultDFMode()));
    EXPECT_EQ(-1, int(s.GetDefaultMethod()));
    EXPECT_EQ(-1, int(s.GetDFMode()));
    s.ResetToDefault();
    EXPECT_FALSE(s.IsDFModeSet());
    EXPECT_FALSE(s.IsMethodSet());
    EXPECT_FALSE(s.IsSelectivitySet());
}

// --- DF_Settings ----------------------------------------------------------------------------

TEST(DFSettings, VersionIs10)
{
    DF_Settings s;
    EXPECT_EQ(QString("1.0"), s.GetVersion());
    EXPECT_TRUE(compactXml(minimalDF()).startsWith("<DF_Settings Version=\"1.0\">"));
    const QByteArray body = bodyOf(minimalDF().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(QByteArray::fromHex("e25fbba8" "0000000a" "00000006" "0031002e0030"), body.left(18));
}

TEST(DFSettings, OlderDocumentResetsAndSkipsUnknown)
{
    for (const char *version : {"", "0.9"}) {
        DF_Settings s;
        s.SetDefaultApplicationMode("default mode");
        s.SetApplicationMode("held");
        const QString attr = *version ? QStringLiteral(" Version=\"%1\"").arg(version) : QString();
        ASSERT_TRUE(s.SetXmlString(dfDocument(attr, "<Legacy><ICMMode>x</ICMMode></Legacy>"), true)) << version;
        EXPECT_EQ(QString("default mode"), s.GetApplicationMode());
        EXPECT_FALSE(s.IsICMModeSet());
        EXPECT_EQ(QString(version), s.GetInitialVersionLoaded());
    }
}

TEST(DFSettings, CurrentAndNewerDocumentRefuseUnknown)
{
    // 1.10 reads as 1.1, which is newer than 1.0.
    for (const char *version : {"1.0", "1.10", "2.5"}) {
        DF_Settings s;
        s.SetDefaultApplicationMode("default mode");
        s.SetApplicationMode("held");
        const QString attr = QStringLiteral(" Version=\"%1\"").arg(version);
        EXPECT_THROW_MESSAGE(s.SetXmlString(dfDocument(attr, "<Legacy/>"), true), InvalidXmlException,
                             "Unknown Tag 'Legacy' in 'DF_Settings'.");
        DF_Settings ok;
        ok.SetApplicationMode("held");
        ASSERT_TRUE(ok.SetXmlString(dfDocument(attr, ""), true));
        EXPECT_EQ(QString("held"), ok.GetApplicationMode()) << version;
        DF_Settings lax;
        lax.SetValidate(false);
        ASSERT_TRUE(lax.SetXmlString(dfDocument(attr, "<Legacy><ICMMode>x</ICMMode></Legacy>"), true));
        EXPECT_EQ(QString("x"), lax.GetICMMode());
    }
}

TEST(DFSettings, EnumerationNamesWithBlanksAndSlashesInXml)
{
    DF_Settings s = minimalDF();
    s.SetActivity(DF_Settings::Activity_No_DF_Locate);
    s.SetWorkflow(DF_Settings::Workflow_Single_shot);
    const QString xml = compactXml(s);
    EXPECT_TRUE(xml.contains("<Activity>No DF/Locate</Activity>")) << xml.toStdString();
    EXPECT_TRUE(xml.contains("<Workflow>Single shot</Workflow>"));
    DF_Settings back;
    ASSERT_TRUE(back.SetXmlString(xml, true));
    EXPECT_EQ(DF_Settings::Activity_No_DF_Locate, back.GetActivity());
    EXPECT_EQ(DF_Settings::Workflow_Single_shot, back.GetWorkflow());
}

TEST(DFSettings, CheckNamesMandatoryMembers)
{
    DF_Settings s;
    s.SetBandwidth(samples::valueRecord<Bandwidth>(1.0));
    s.SetAveraging(1.0);
    EXPECT_FALSE(s.HasData());
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "DF_Settings: Please set DFMode properly.");
    DF_Settings t;
    t.SetBandwidth(samples::valueRecord<Bandwidth>(1.0));
    t.SetDFMode(DF_Settings::DFMode_Gate);
    EXPECT_FALSE(t.HasData());
    EXPECT_THROW_MESSAGE(t.Check(), OutOfRangeException, "DF_Settings: Please set Averaging properly.");
    t.SetAveraging(0.0);
    EXPECT_TRUE(t.HasData());
    EXPECT_NO_THROW(t.Check());
}

// Check refuses the invalid optional members first, then names Averaging
// before DFMode, and asks for the bandwidth last.
TEST(DFSettings, CheckOrderOptionalMembersThenAveragingThenDFMode)
{
    DF_Settings s;
    s.SetValidate(false);
    s.SetSelectivity(DF_Settings::Selectivity(9));
    s.SetICMMode(QString());
    s.SetValidate(true);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "DF_Settings: Please set Selectivity properly.");
    s.SetSelectivity(DF_Settings::Selectivity_SHARP);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "DF_Settings: Please set ICMMode properly.");
    s.SetICMMode(QLatin1String(""));
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "DF_Settings: Please set Averaging properly.");
    s.SetAveraging(4.0);
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "DF_Settings: Please set DFMode properly.");
    s.SetDFMode(DF_Settings::DFMode_Norm);
    EXPECT_THROW_MESSAGE(s.Check(), IncompleteDefinitionException,
                         "Parameters for Bandwidth are not set properly in 'DF_Settings'.");
    s.SetBandwidth(samples::valueRecord<Bandwidth>(1.0));
    EXPECT_NO_THROW(s.Check());
}

TEST(DFSettings, MissingBandwidthFailsWriting)
{
    DF_Settings s;
    s.SetDFMode(DF_Settings::DFMode_Cont);
    s.SetAveraging(2.0);
    EXPECT_FALSE(s.HasData());
    EXPECT_THROW_MESSAGE(s.GetXmlString(), IncompleteDefinitionException,
                         "Parameters for Bandwidth are not set properly in 'DF_Settings'.");
}

TEST(DFSettings, CheckNamesInvalidOptionalMembers)
{
    using S = DF_Settings;
    expectCheckNamesSpoiled<S>(fullDF(), "DF_Settings", {
        {"Workflow", [](S &s) { s.SetWorkflow(S::Workflow(2)); }},
        {"Activity", [](S &s) { s.SetActivity(S::Activity(3)); }},
        {"ActivityTrigger", [](S &s) { s.SetActivityTrigger(S::ActivityTrigger(-1)); }},
        {"Method", [](S &s) { s.SetMethod(S::Method(5)); }},
        {"Selectivity", [](S &s) { s.SetSelectivity(S::Selectivity(4)); }},
        {"ApplicationMode", [](S &s) { s.SetApplicationMode(QString()); }},
        {"ICMMode", [](S &s) { s.SetICMMode(QString()); }},
        {"MonitoredVTCFrequencies", [](S &s) { s.SetMonitoredVTCFrequencies(QString()); }},
        {"DFMode", [](S &s) { s.SetDFMode(S::DFMode(3)); }},
    });
}

TEST(DFSettings, BinaryMemberOrder)
{
    const QByteArray body = bodyOf(fullDF().GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{VersionTag, TagBandwidth, TagDFMode, TagDFStep, TagFreqSpan, TagAveraging, TagWorkflow,
                                TagActivity, TagActivityTrigger, TagMethod, TagSelectivity, TagFrequencyOffset,
                                TagApplicationMode, TagICMMode, TagMonitoredVTC, TagDFDetail}),
              tagsOf(body));
    EXPECT_EQ(utf8Value("No DF/Locate"), valueOf(body, TagActivity));
    EXPECT_EQ(utf8Value("4.00"), valueOf(body, TagAveraging));
}

TEST(DFSettings, FullRoundTrip)
{
    const DF_Settings s = fullDF();
    DF_Settings fromBinary = roundTrip(s).fromBinary;
    EXPECT_EQ(QString("1.0"), fromBinary.GetInitialVersionLoaded());
    fromBinary.GetDetail().SetElevationMax(86);
    EXPECT_FALSE(fromBinary == s);
}

TEST(DFSettings, UnknownEnumNameInXml)
{
    const QString doc = dfDocument(" Version=\"1.0\"", "<Method>auto</Method>");
    readUnknownEnumName(doc, "enum is not valid (classname=DF_Settings,membername=m_method)",
                        &DF_Settings::IsMethodSet, &DF_Settings::GetMethod);
}

// --- DF_SettingsDetail ------------------------------------------------------------------------

TEST(DFSettingsDetail, CheckNamesMandatoryMembers)
{
    DF_SettingsDetail d;
    d.SetElevationMin(10);
    d.SetElevationMax(-10);
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set QualityThreshold properly.");
    d.SetQualityThreshold(0);
    EXPECT_FALSE(d.HasData());
    EXPECT_THROW_MESSAGE(d.Check(), OutOfRangeException, "Detail: Please set LevelThreshold properly.");
    d.SetLevelThreshold(0.0);
    EXPECT_TRUE(d.HasData());
    // No relation between the elevations is tested.
    EXPECT_NO_THROW(d.Check());
}

TEST(DFSettingsDetail, IntsTravelAsRaw32)
{
    DF_SettingsDetail d;
    d.SetQualityThreshold(0x7fffffff);
    d.SetLevelThreshold(-90.5);
    d.SetElevationMin(-1);
    d.SetElevationMax(256);
    const QByteArray rep = d.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(QByteArray::fromHex("e7773c6a"), rep.left(4));
    const QByteArray body = bodyOf(rep);
    EXPECT_EQ(QByteArray::fromHex("caeafd4c" "00000004" "7fffffff"), body.left(12));
    EXPECT_EQ((QVector<quint32>{TagQualityThreshold, TagLevelThreshold, TagElevationMin, TagElevationMax}), tagsOf(body));
    EXPECT_EQ(QByteArray::fromHex("ffffffff"), valueOf(body, TagElevationMin));
    EXPECT_EQ(QByteArray::fromHex("00000100"), valueOf(body, TagElevationMax));
    EXPECT_EQ(utf8Value("-90.50"), valueOf(body, TagLevelThreshold));
    DF_SettingsDetail back;
    QByteArray copy = rep;
    ASSERT_TRUE(back.SetBinaryRepresentation(copy));
    EXPECT_TRUE(back == d);
    EXPECT_EQ(0x7fffffff, back.GetQualityThreshold());
    EXPECT_EQ(-1, back.GetElevationMin());
}

TEST(DFSettingsDetail, XmlForm)
{
    EXPECT_EQ(QString("<Detail><QualityThreshold>60</QualityThreshold><LevelThreshold>-90.50</LevelThreshold>"
                      "<ElevationMin>-5</ElevationMin><ElevationMax>85</ElevationMax></Detail>"),
              compactXml(fullDFDetail()));
    DF_SettingsDetail back;
    ASSERT_TRUE(back.SetXmlString(compactXml(fullDFDetail()), true));
    EXPECT_TRUE(back == fullDFDetail());
    EXPECT_TRUE(back.GetVersion().isEmpty());
}

TEST(DFSettingsDetail, WrongLengthOfRawIntFails)
{
    // A raw 32-bit value under a length of 8 leaves the lengths unbalanced.
    QByteArray rep = representation(DF_SettingsDetail::GetId(),
                                    frame(TagQualityThreshold, be32(0) + be32(5)) + frame(TagLevelThreshold, utf8Value("1.00")));
    DF_SettingsDetail d;
    EXPECT_FALSE(d.SetBinaryRepresentation(rep));
    EXPECT_FALSE(d.AnyData());
}

// --- ShapeDetectorSettings ----------------------------------------------------------------------

TEST(ShapeDetector, XmlRepeatedElements)
{
    ShapeDetectorSettings s;
    s.AppendGenericShape("burst");
    s.AppendGenericShape("chirp");
    s.AppendShape("Ω-shape");
    EXPECT_EQ(QString("<ShapeDetectorSettings><GenericShape>burst</GenericShape><GenericShape>chirp</GenericShape>"
                      "<Shape>Ω-shape</Shape></ShapeDetectorSettings>"),
              compactXml(s));
    ShapeDetectorSettings back;
    ASSERT_TRUE(back.SetXmlString(compactXml(s), true));
    EXPECT_TRUE(back == s);
    EXPECT_EQ((QVector<QString>{"burst", "chirp"}), back.GetGenericShape());
    EXPECT_EQ((QVector<QString>{QString("Ω-shape")}), back.GetShape());
}

TEST(ShapeDetector, BinaryForm)
{
    ShapeDetectorSettings s;
    s.AppendGenericShape("ab");
    s.AppendGenericShape("Ä");
    s.AppendShape("xyz");
    const QByteArray rep = s.GetBinaryRepresentationAsQByteArray();
    EXPECT_EQ(QByteArray::fromHex("9e7f74de"), rep.left(4));
    const QByteArray body = bodyOf(rep);
    // Tag, length, count, then each item as a QByteArray of UTF-8.
    EXPECT_EQ(QByteArray::fromHex("9e874813" "00000010" "00000002" "00000002" "6162" "00000002" "c384"
                                  "b92679c3" "0000000b" "00000001" "00000003" "78797a"),
              body);
    ShapeDetectorSettings back;
    QByteArray copy = rep;
    ASSERT_TRUE(back.SetBinaryRepresentation(copy));
    EXPECT_TRUE(back == s);
    EXPECT_EQ((QVector<QString>{"ab", "Ä"}), back.GetGenericShape());
}

TEST(ShapeDetector, EmptyListsWriteTheirFrames)
{
    ShapeDetectorSettings s;
    s.SetValidate(false);
    s.SetGenericShape({});
    const QByteArray body = bodyOf(s.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ(QByteArray::fromHex("9e874813" "00000004" "00000000" "b92679c3" "00000004" "00000000"), body);
    EXPECT_EQ(QString("<ShapeDetectorSettings/>"), compactXml(s));
}

TEST(ShapeDetector, CheckNamesBothLists)
{
    ShapeDetectorSettings s;
    EXPECT_FALSE(s.HasData());
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "ShapeDetectorSettings: Please set GenericShape properly.");
    s.AppendGenericShape("g");
    EXPECT_FALSE(s.HasData());
    EXPECT_TRUE(s.AnyData());
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "ShapeDetectorSettings: Please set Shape properly.");
    s.AppendShape("");
    EXPECT_TRUE(s.HasData());
    EXPECT_NO_THROW(s.Check());
    s.SetShape({QString()});
    EXPECT_THROW_MESSAGE(s.Check(), OutOfRangeException, "ShapeDetectorSettings: Please set Shape properly.");
}

TEST(ShapeDetector, RoundTripInEntryOrder)
{
    ShapeDetectorSettings s;
    for (int i = 0; i < 5; ++i) {
        s.AppendGenericShape(QStringLiteral("g%1").arg(i));
        s.AppendShape(QStringLiteral("s%1").arg(4 - i));
    }
    ShapeDetectorSettings fromBinary = roundTrip(s).fromBinary;
    fromBinary.GetShape()[0] = "changed";
    EXPECT_FALSE(fromBinary == s);
}
