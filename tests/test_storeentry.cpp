// Tests of the store entry: its usage enumeration, the choice between the
// fixed-frequency and the short-time branch, Check, versioning and both
// written forms.

#include "recordtestsupport.h"
#include "tags.h"

using namespace Morvane;
using namespace MorvaneTest;
using ORBELIN::IncompleteDefinitionException;
using ORBELIN::InvalidXmlException;
using ORBELIN::OutOfRangeException;

namespace {

using Choice = FrequencyStoreEntry::ChoiceFrequencyStoreEntry;

const QStringList kUsageNames = {"Undefined", "Resultlist", "NotOfInterest", "Target",     "WellKnown",
                                 "Known",     "Matching",   "Notepad",       "MemoryScan", "Suppress"};

FFM_Settings completeFFM(double value = 145500000.0)
{
    FFM_Settings s;
    Frequency f;
    f.SetValue(value);
    s.SetFrequency(f);
    IFBandwidth bw;
    bw.SetValue(12500.0);
    s.SetIFBandwidth(bw);
    s.SetAnalogDemod(FFM_Settings::AnalogDemod_FM);
    return s;
}

ShortTime_Settings completeShortTime(double hops = 2.5)
{
    ShortTime_Settings s;
    s.SetHopsPerSecond(hops);
    Frequency f;
    f.SetValue(30000000.0);
    s.AppendFrequency(f);
    return s;
}

QString entryDocument(const QString &versionAttribute, const QString &content)
{
    return QStringLiteral("<FrequencyStoreEntry%1>%2</FrequencyStoreEntry>").arg(versionAttribute, content);
}

const QString kFFMElement = QStringLiteral(
    "<FFM_Settings Version=\"1.2\"><Frequency>100.00</Frequency><IFBandwidth>9.00</IFBandwidth></FFM_Settings>");
const QString kShortTimeElement =
    QStringLiteral("<ShortTime_Settings><HopsPerSecond>4.00000000</HopsPerSecond></ShortTime_Settings>");

} // namespace

// --- enumerations -----------------------------------------------------------------------

TEST(StoreEntryUsage, OwnListSameNames)
{
    EXPECT_EQ(kUsageNames, FrequencyStoreEntry::GetUsages());
    EXPECT_EQ(FrequencyStoreEntry::GetUsages(), FrequencyStoreEntry::GetGUIUsages());
    FrequencyStoreEntry e;
    for (int i = 0; i < kUsageNames.size(); ++i) {
        EXPECT_EQ(kUsageNames.at(i), e.UsageToName(FrequencyStoreEntry::Usage(i)));
        EXPECT_EQ(i, int(e.NameToUsage(kUsageNames.at(i))));
    }
    EXPECT_TRUE(e.UsageToName(FrequencyStoreEntry::Usage(-1)).isNull());
    EXPECT_TRUE(e.UsageToName(FrequencyStoreEntry::Usage(10)).isNull());
    EXPECT_EQ(-1, int(e.NameToUsage("suppress")));
    e.SetInvalidUsage(FrequencyStoreEntry::Usage(20));
    EXPECT_EQ(20, int(e.NameToUsage("suppress")));
    EXPECT_EQ(20, int(e.GetInvalidUsage()));
}

TEST(StoreEntryUsage, GuiListsGoThroughTranslation)
{
    ScopedMarkingTranslator translator;
    ASSERT_TRUE(translator.installed());
    EXPECT_EQ(ScopedMarkingTranslator::marked("Morvane::FrequencyStoreEntry", kUsageNames),
              FrequencyStoreEntry::GetGUIUsages());
    EXPECT_EQ(ScopedMarkingTranslator::marked("Morvane::FrequencyStoreEntry",
                                              QStringList{"FFM_Settings", "ShortTime_Settings"}),
              FrequencyStoreEntry::GetGUIChoiceFrequencyStoreEntrys());
    EXPECT_EQ(QString("Morvane::FrequencyStoreEntry|Target"), FrequencyStoreEntry::tr("Target"));
    EXPECT_EQ(QString("Morvane::FrequencyStoreEntry|Target"), FrequencyStoreEntry::trUtf8("Target"));
}

TEST(StoreEntryUsage, TrGivesTextBack)
{
    EXPECT_EQ(QString("Known"), FrequencyStoreEntry::tr("Known"));
    EXPECT_EQ(QString("Änderung"), FrequencyStoreEntry::trUtf8("Änderung"));
}

TEST(StoreEntryUsage, InvalidValueNamesTheClass)
{
    FrequencyStoreEntry e;
    e.SetUsage(FrequencyStoreEntry::Usage_Resultlist);
    EXPECT_THROW_MESSAGE(e.SetUsage(FrequencyStoreEntry::Usage(10)), OutOfRangeException,
                         "enum is not valid (classname=FrequencyStoreEntry,membername=m_usage)");
    EXPECT_EQ(FrequencyStoreEntry::Usage_Resultlist, e.GetUsage());
    e.SetValidate(false);
    e.SetUsage(FrequencyStoreEntry::Usage(-1));
    EXPECT_TRUE(e.IsUsageSet());
    EXPECT_EQ(-1, int(e.GetUsage()));
}

TEST(StoreEntryChoice, Names)
{
    EXPECT_EQ((QStringList{"FFM_Settings", "ShortTime_Settings"}), FrequencyStoreEntry::GetChoiceFrequencyStoreEntrys());
    EXPECT_EQ(FrequencyStoreEntry::GetChoiceFrequencyStoreEntrys(), FrequencyStoreEntry::GetGUIChoiceFrequencyStoreEntrys());
    FrequencyStoreEntry e;
    EXPECT_EQ(-1, int(e.GetInvalidChoiceFrequencyStoreEntry()));
    EXPECT_TRUE(e.ChoiceFrequencyStoreEntryToName(Choice(-1)).isNull());
    EXPECT_EQ(QString("FFM_Settings"), e.ChoiceFrequencyStoreEntryToName(Choice(0)));
    EXPECT_EQ(QString("ShortTime_Settings"), e.ChoiceFrequencyStoreEntryToName(Choice(1)));
    EXPECT_EQ(0, int(e.NameToChoiceFrequencyStoreEntry("FFM_Settings")));
    EXPECT_EQ(1, int(e.NameToChoiceFrequencyStoreEntry("ShortTime_Settings")));
    EXPECT_EQ(-1, int(e.NameToChoiceFrequencyStoreEntry("ffm_settings")));
    EXPECT_TRUE(e.IsValidChoiceFrequencyStoreEntry(Choice(1)));
    EXPECT_FALSE(e.IsValidChoiceFrequencyStoreEntry(Choice(2)));
    EXPECT_FALSE(e.IsValidChoiceFrequencyStoreEntry(Choice(-1)));
}

// --- choice ---------------------------------------------------------------------------------

TEST(StoreEntryChoice, NewEntryHasNoBranch)
{
    FrequencyStoreEntry e;
    EXPECT_FALSE(e.HasData());
    EXPECT_FALSE(e.AnyData());
    EXPECT_EQ(-1, int(e.GetChoiceFrequencyStoreEntry()));
    EXPECT_FALSE(e.IsFFM_SettingsSet());
    EXPECT_FALSE(e.IsShortTime_SettingsSet());
}

TEST(StoreEntryChoice, NonConstGetterSelectsBranch)
{
    FrequencyStoreEntry e;
    e.GetFFM_Settings();
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_FFM_Settings, e.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(e.IsFFM_SettingsSet());
    EXPECT_FALSE(e.HasData());
    // Settings with data, but still no type.
    e.GetFFM_Settings() = completeFFM();
    EXPECT_FALSE(e.HasData());
    e.SetType("FFM");
    EXPECT_TRUE(e.HasData());

    e.GetShortTime_Settings();
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_ShortTime_Settings, e.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(e.IsFFM_SettingsSet());
    EXPECT_TRUE(e.IsShortTime_SettingsSet());
    EXPECT_FALSE(e.HasData());
    e.GetShortTime_Settings().SetHopsPerSecond(3.0);
    EXPECT_TRUE(e.HasData());
}

TEST(StoreEntryChoice, ConstGetterDoesNotSelect)
{
    FrequencyStoreEntry e;
    const FrequencyStoreEntry &view = e;
    view.GetShortTime_Settings();
    view.GetFFM_Settings();
    EXPECT_EQ(-1, int(e.GetChoiceFrequencyStoreEntry()));
    EXPECT_FALSE(e.IsFFM_SettingsSet());
    EXPECT_FALSE(e.IsShortTime_SettingsSet());
}

TEST(StoreEntryChoice, InitChoiceWithInvalidValueThrows)
{
    FrequencyStoreEntry e;
    EXPECT_THROW_MESSAGE(e.InitChoice(Choice(-1)), OutOfRangeException, "Invalid enum value set in 'FrequencyStoreEntry'.");
    e.SetInvalidChoiceFrequencyStoreEntry(Choice(5));
    EXPECT_THROW_MESSAGE(e.InitChoice(Choice(5)), OutOfRangeException, "Invalid enum value set in 'FrequencyStoreEntry'.");
}

TEST(StoreEntryChoice, InitChoiceResetsAndSelects)
{
    FrequencyStoreEntry e;
    e.SetType("gone");
    e.SetShortTime_Settings(completeShortTime());
    e.SetDefaultFFM_Settings(completeFFM(7000000.0));
    e.InitChoice(Choice::ChoiceFrequencyStoreEntry_FFM_Settings);
    EXPECT_FALSE(e.IsTypeSet());
    EXPECT_TRUE(e.GetType().isNull());
    EXPECT_FALSE(e.IsShortTime_SettingsSet());
    EXPECT_TRUE(e.IsFFM_SettingsSet());
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_FFM_Settings, e.GetChoiceFrequencyStoreEntry());
    // The branch takes its default slot.
    const FrequencyStoreEntry &view = e;
    EXPECT_EQ(7000000.0, view.GetFFM_Settings().GetFrequency().GetValue());

    e.InitChoice(Choice::ChoiceFrequencyStoreEntry_ShortTime_Settings);
    EXPECT_FALSE(e.IsFFM_SettingsSet());
    EXPECT_TRUE(e.IsShortTime_SettingsSet());
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_ShortTime_Settings, e.GetChoiceFrequencyStoreEntry());
}

TEST(StoreEntryChoice, ResetClearsTheChoice)
{
    FrequencyStoreEntry e;
    e.SetFFM_Settings(completeFFM());
    e.Reset();
    EXPECT_EQ(-1, int(e.GetChoiceFrequencyStoreEntry()));
    e.SetShortTime_Settings(completeShortTime());
    e.ResetChoiceFrequencyStoreEntry();
    EXPECT_EQ(-1, int(e.GetChoiceFrequencyStoreEntry()));
    EXPECT_TRUE(e.IsShortTime_SettingsSet());
}

TEST(StoreEntryChoice, LastSelectedBranchAloneIsWritten)
{
    FrequencyStoreEntry e;
    e.SetType("both");
    e.SetShortTime_Settings(completeShortTime());
    e.SetFFM_Settings(completeFFM());
    EXPECT_TRUE(e.IsShortTime_SettingsSet());
    EXPECT_TRUE(e.IsFFM_SettingsSet());
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_FFM_Settings, e.GetChoiceFrequencyStoreEntry());

    const QString xml = compactXml(e);
    EXPECT_TRUE(xml.contains("<FFM_Settings")) << xml.toStdString();
    EXPECT_FALSE(xml.contains("<ShortTime_Settings")) << xml.toStdString();
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_TRUE(hasTag(body, TagFFM));
    EXPECT_FALSE(hasTag(body, TagShortTime));

    e.GetShortTime_Settings();
    const QString xml2 = compactXml(e);
    EXPECT_FALSE(xml2.contains("<FFM_Settings")) << xml2.toStdString();
    EXPECT_TRUE(xml2.contains("<ShortTime_Settings>")) << xml2.toStdString();
    const QByteArray body2 = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_FALSE(hasTag(body2, TagFFM));
    EXPECT_TRUE(hasTag(body2, TagShortTime));
}

TEST(StoreEntryChoice, XmlWithBothBranchesKeepsTheLastRead)
{
    FrequencyStoreEntry a;
    ASSERT_TRUE(a.SetXmlString(entryDocument(" Version=\"2.0\"", "<Type>x</Type>" + kShortTimeElement + kFFMElement), true));
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_FFM_Settings, a.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(a.IsFFM_SettingsSet());
    EXPECT_TRUE(a.IsShortTime_SettingsSet());
    const FrequencyStoreEntry &va = a;
    EXPECT_EQ(4.0, va.GetShortTime_Settings().GetHopsPerSecond());
    EXPECT_EQ(100.0, va.GetFFM_Settings().GetFrequency().GetValue());

    FrequencyStoreEntry b;
    ASSERT_TRUE(b.SetXmlString(entryDocument(" Version=\"2.0\"", "<Type>x</Type>" + kFFMElement + kShortTimeElement), true));
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_ShortTime_Settings, b.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(b.IsFFM_SettingsSet());
    EXPECT_TRUE(b.IsShortTime_SettingsSet());
}

TEST(StoreEntryChoice, BinaryWithBothBranchesKeepsTheLastRead)
{
    const QByteArray ffm = nested(completeFFM(), TagFFM);
    const QByteArray shortTime = nested(completeShortTime(6.0), TagShortTime);
    const QByteArray type = frame(TagType, utf8Value("x"));

    FrequencyStoreEntry a;
    QByteArray repA = representation(FrequencyStoreEntry::GetId(), versionFrame("2.0") + type + shortTime + ffm);
    ASSERT_TRUE(a.SetBinaryRepresentation(repA));
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_FFM_Settings, a.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(a.IsFFM_SettingsSet());
    EXPECT_TRUE(a.IsShortTime_SettingsSet());
    const FrequencyStoreEntry &va = a;
    EXPECT_EQ(6.0, va.GetShortTime_Settings().GetHopsPerSecond());

    FrequencyStoreEntry b;
    QByteArray repB = representation(FrequencyStoreEntry::GetId(), versionFrame("2.0") + type + ffm + shortTime);
    ASSERT_TRUE(b.SetBinaryRepresentation(repB));
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_ShortTime_Settings, b.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(b.IsFFM_SettingsSet());
    EXPECT_TRUE(b.IsShortTime_SettingsSet());
}

TEST(StoreEntryChoice, ReadingOneBranchLeavesTheOther)
{
    FrequencyStoreEntry e;
    e.SetType("t");
    e.SetShortTime_Settings(completeShortTime());
    QByteArray rep = representation(FrequencyStoreEntry::GetId(), versionFrame("2.0") + nested(completeFFM(), TagFFM));
    ASSERT_TRUE(e.SetBinaryRepresentation(rep));
    EXPECT_EQ(Choice::ChoiceFrequencyStoreEntry_FFM_Settings, e.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(e.IsShortTime_SettingsSet());
    const FrequencyStoreEntry &view = e;
    EXPECT_EQ(2.5, view.GetShortTime_Settings().GetHopsPerSecond());
}

TEST(StoreEntryChoice, NoBranchWritesNeitherWithoutValidation)
{
    FrequencyStoreEntry e;
    e.SetValidate(false);
    e.SetType("none");
    e.SetFFM_Settings(completeFFM());
    e.SetShortTime_Settings(completeShortTime());
    e.ResetChoiceFrequencyStoreEntry();
    const QString xml = compactXml(e);
    EXPECT_EQ(QString("<FrequencyStoreEntry Version=\"2.0\"><Type>none</Type></FrequencyStoreEntry>"), xml);
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{VersionTag, TagType}), tagsOf(body));
}

TEST(StoreEntryChoice, NoBranchWithValidationWritesNothing)
{
    FrequencyStoreEntry e;
    e.SetType("none");
    EXPECT_NO_THROW(e.Check());
    EXPECT_TRUE(compactXml(e).isEmpty());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    prepare(stream);
    EXPECT_FALSE(e.GetBinary(stream, int(FrequencyStoreEntry::GetId()), true));
    EXPECT_TRUE(bytes.isEmpty());
}

// --- type and Check -------------------------------------------------------------------------

TEST(StoreEntryCheck, EmptyTypePassesNullTypeFails)
{
    FrequencyStoreEntry e;
    e.SetFFM_Settings(completeFFM());
    EXPECT_FALSE(e.HasData());
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "FrequencyStoreEntry: Please set Type properly.");
    e.SetType("");
    EXPECT_TRUE(e.HasData());
    EXPECT_NO_THROW(e.Check());
    e.SetValidate(false);
    e.SetType(QString());
    EXPECT_TRUE(e.IsTypeSet());
    EXPECT_FALSE(e.HasData());
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "FrequencyStoreEntry: Please set Type properly.");
}

TEST(StoreEntryCheck, NullTypeRefusedWithValidation)
{
    FrequencyStoreEntry e;
    e.SetType("kept");
    EXPECT_THROW_MESSAGE(e.SetType(QString()), OutOfRangeException, "FrequencyStoreEntry: Please set Type properly.");
    EXPECT_EQ(QString("kept"), e.GetType());
}

TEST(StoreEntryCheck, SelectedFFMBranchWithoutData)
{
    FrequencyStoreEntry e;
    e.SetType("t");
    e.GetFFM_Settings();
    EXPECT_THROW_MESSAGE(e.Check(), IncompleteDefinitionException,
                         "FrequencyStoreEntry:Check failed. The mandatory member m_fFM_Settings is not set or "
                         "mandatory data of the member is not set.");
}

TEST(StoreEntryCheck, SelectedShortTimeBranchWithoutData)
{
    FrequencyStoreEntry e;
    e.SetType("t");
    e.GetShortTime_Settings();
    EXPECT_THROW_MESSAGE(e.Check(), IncompleteDefinitionException,
                         "FrequencyStoreEntry:Check failed. The mandatory member m_shortTime_Settings is not set or "
                         "mandatory data of the member is not set.");
}

TEST(StoreEntryCheck, BranchTestOnlyWithValidation)
{
    FrequencyStoreEntry e;
    e.SetType("t");
    e.GetFFM_Settings();
    e.SetValidate(false);
    EXPECT_NO_THROW(e.Check());
    e.SetValidate(true);
    EXPECT_THROW(e.Check(), IncompleteDefinitionException);
}

TEST(StoreEntryCheck, BranchTestedFirst)
{
    FrequencyStoreEntry e;
    e.GetShortTime_Settings();
    // Type is missing too, but the branch is tested before it.
    EXPECT_THROW_MESSAGE(e.Check(), IncompleteDefinitionException,
                         "FrequencyStoreEntry:Check failed. The mandatory member m_shortTime_Settings is not set or "
                         "mandatory data of the member is not set.");
}

TEST(StoreEntryCheck, SelectedBranchIsChecked)
{
    FrequencyStoreEntry e;
    e.SetType("t");
    e.SetFFM_Settings(completeFFM());
    e.SetValidate(false);
    e.GetFFM_Settings().SetTunerMode(FFM_Settings::TunerMode(9));
    EXPECT_THROW_MESSAGE(e.Check(), OutOfRangeException, "FFM_Settings: Please set TunerMode properly.");
    // The branch that is not selected is not looked at.
    e.SetShortTime_Settings(completeShortTime());
    EXPECT_NO_THROW(e.Check());
}

TEST(StoreEntryCheck, ScalarMessages)
{
    FrequencyStoreEntry valid;
    valid.SetType("t");
    valid.SetFFM_Settings(completeFFM());
    expectCheckNamesSpoiled<FrequencyStoreEntry>(valid, "FrequencyStoreEntry", {
        {"Usage", [](FrequencyStoreEntry &e) { e.SetUsage(FrequencyStoreEntry::Usage(11)); }},
        {"ID", [](FrequencyStoreEntry &e) { e.SetID(QString()); }},
        {"Antenna", [](FrequencyStoreEntry &e) { e.SetAntenna(QString()); }},
        {"Comment", [](FrequencyStoreEntry &e) { e.SetComment(QString()); }},
        {"AdditionalInfo", [](FrequencyStoreEntry &e) { e.SetAdditionalInfo(QString()); }},
    });
}

TEST(StoreEntryCheck, NullStringsRefusedWithValidation)
{
    FrequencyStoreEntry e;
    EXPECT_THROW_MESSAGE(e.SetID(QString()), OutOfRangeException, "FrequencyStoreEntry: Please set ID properly.");
    EXPECT_THROW_MESSAGE(e.SetAntenna(QString()), OutOfRangeException, "FrequencyStoreEntry: Please set Antenna properly.");
    EXPECT_THROW_MESSAGE(e.SetComment(QString()), OutOfRangeException, "FrequencyStoreEntry: Please set Comment properly.");
    EXPECT_THROW_MESSAGE(e.SetAdditionalInfo(QString()), OutOfRangeException,
                         "FrequencyStoreEntry: Please set AdditionalInfo properly.");
    EXPECT_FALSE(e.AnyData());
}

TEST(StoreEntryCheck, AnyDataOfEachMember)
{
    FrequencyStoreEntry byComment;
    byComment.SetComment("c");
    EXPECT_TRUE(byComment.AnyData());
    EXPECT_FALSE(byComment.HasData());
    FrequencyStoreEntry byUsage;
    byUsage.SetUsage(FrequencyStoreEntry::Usage_Undefined);
    EXPECT_TRUE(byUsage.AnyData());
    FrequencyStoreEntry byInfo;
    byInfo.SetAdditionalInfo("");
    EXPECT_TRUE(byInfo.AnyData());
    FrequencyStoreEntry byBranch;
    byBranch.GetShortTime_Settings().SetBreak(1.0);
    EXPECT_TRUE(byBranch.AnyData());
}

// --- versioning ---------------------------------------------------------------------------

TEST(StoreEntryVersion, VersionIs20)
{
    FrequencyStoreEntry e;
    EXPECT_EQ(QString("2.0"), e.GetVersion());
    EXPECT_TRUE(e.GetInitialVersionLoaded().isEmpty());
}

TEST(StoreEntryVersion, OlderDocumentStartsFromDefaults)
{
    for (const char *version : {"", "1.0", "1.9", "1.10"}) {
        FrequencyStoreEntry e;
        e.SetDefaultType("default type");
        e.SetDefaultUsage(FrequencyStoreEntry::Usage_Notepad);
        e.SetType("held");
        const QString attr = *version ? QStringLiteral(" Version=\"%1\"").arg(version) : QString();
        ASSERT_TRUE(e.SetXmlString(entryDocument(attr, "<Old><Type>no</Type></Old><ID>7</ID>" + kFFMElement), true))
            << version;
        EXPECT_EQ(QString(version), e.GetInitialVersionLoaded());
        EXPECT_EQ(QString("default type"), e.GetType()) << version;
        EXPECT_EQ(FrequencyStoreEntry::Usage_Notepad, e.GetUsage()) << version;
        EXPECT_EQ(QString("7"), e.GetID());
        EXPECT_TRUE(e.HasData());
    }
}

TEST(StoreEntryVersion, CurrentDocumentKeepsAndRefusesUnknown)
{
    FrequencyStoreEntry e;
    e.SetDefaultType("default type");
    e.SetType("held");
    ASSERT_TRUE(e.SetXmlString(entryDocument(" Version=\"2.0\"", "<ID>7</ID>"), true));
    EXPECT_EQ(QString("held"), e.GetType());
    EXPECT_THROW_MESSAGE(e.SetXmlString(entryDocument(" Version=\"2.0\"", "<Old/>"), true), InvalidXmlException,
                         "Unknown Tag 'Old' in 'FrequencyStoreEntry'.");
    EXPECT_THROW_MESSAGE(e.SetXmlString(entryDocument(" Version=\"3.1\"", "<Old/>"), true), InvalidXmlException,
                         "Unknown Tag 'Old' in 'FrequencyStoreEntry'.");
}

TEST(StoreEntryVersion, BinaryOlderVersionStartsFromDefaults)
{
    FrequencyStoreEntry e;
    e.SetDefaultAntenna("default antenna");
    e.SetAntenna("held");
    QByteArray rep = representation(FrequencyStoreEntry::GetId(), versionFrame("1.5") + frame(TagType, utf8Value("t")));
    ASSERT_TRUE(e.SetBinaryRepresentation(rep));
    EXPECT_EQ(QString("1.5"), e.GetInitialVersionLoaded());
    EXPECT_EQ(QString("default antenna"), e.GetAntenna());
    EXPECT_EQ(QString("t"), e.GetType());

    FrequencyStoreEntry current;
    current.SetDefaultAntenna("default antenna");
    current.SetAntenna("held");
    QByteArray rep2 = representation(FrequencyStoreEntry::GetId(), versionFrame("2.0") + frame(TagType, utf8Value("t")));
    ASSERT_TRUE(current.SetBinaryRepresentation(rep2));
    EXPECT_EQ(QString("held"), current.GetAntenna());
}

TEST(StoreEntryVersion, ResetToDefaultReachesTheBranches)
{
    FrequencyStoreEntry e;
    e.ResetToDefault();
    EXPECT_FALSE(e.IsFFM_SettingsSet());
    EXPECT_EQ(-1, int(e.GetChoiceFrequencyStoreEntry()));
    const FrequencyStoreEntry &view = e;
    // The fixed-frequency settings have built-in defaults that come back.
    EXPECT_TRUE(view.GetFFM_Settings().IsTunerModeSet());
    EXPECT_TRUE(view.GetFFM_Settings().IsIFStepAutoSet());
}

// --- written forms ----------------------------------------------------------------------------

TEST(StoreEntryForms, BinaryMembersInBitOrder)
{
    FrequencyStoreEntry e;
    e.SetAdditionalInfo("info");
    e.SetShortTime_Settings(completeShortTime());
    e.SetComment("c");
    e.SetAntenna("a");
    e.SetType("t");
    e.SetID("i");
    e.SetUsage(FrequencyStoreEntry::Usage_Suppress);
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    EXPECT_EQ((QVector<quint32>{VersionTag, TagUsage, TagID, TagType, TagAntenna, TagComment, TagShortTime,
                                TagAdditionalInfo}),
              tagsOf(body));
    EXPECT_EQ(QByteArray::fromHex("e25fbba8" "0000000a" "00000006" "0032002e0030"), body.left(18));
    EXPECT_EQ(utf8Value("Suppress"), valueOf(body, TagUsage));
    EXPECT_EQ(QByteArray::fromHex("00000001" "74"), valueOf(body, TagType));
}

TEST(StoreEntryForms, XmlMembersInBitOrder)
{
    FrequencyStoreEntry e;
    e.SetAdditionalInfo("info");
    e.SetFFM_Settings(completeFFM());
    e.SetComment("c");
    e.SetType("t");
    e.SetUsage(FrequencyStoreEntry::Usage_Undefined);
    EXPECT_EQ(QString("<FrequencyStoreEntry Version=\"2.0\"><Usage>Undefined</Usage><Type>t</Type><Comment>c</Comment>"
                      "<FFM_Settings Version=\"1.2\"><Frequency>145500000.00</Frequency><IFBandwidth>12500.00</IFBandwidth>"
                      "<AnalogDemod>FM</AnalogDemod></FFM_Settings><AdditionalInfo>info</AdditionalInfo>"
                      "</FrequencyStoreEntry>"),
              compactXml(e));
}

TEST(StoreEntryForms, UnsetTypeWrittenWithoutValidation)
{
    FrequencyStoreEntry e;
    e.SetValidate(false);
    EXPECT_EQ(QString("<FrequencyStoreEntry Version=\"2.0\"><Type></Type></FrequencyStoreEntry>"), compactXml(e));
    const QByteArray body = bodyOf(e.GetBinaryRepresentationAsQByteArray());
    // The null text: a null QByteArray, size 0xffffffff and no bytes.
    EXPECT_EQ(QByteArray::fromHex("ffffffff"), valueOf(body, TagType));
}

TEST(StoreEntryForms, RoundTripOfBothBranches)
{
    FrequencyStoreEntry ffm;
    ffm.SetUsage(FrequencyStoreEntry::Usage_Target);
    ffm.SetID("A");
    ffm.SetType("FFM");
    ffm.SetAntenna("");
    ffm.SetFFM_Settings(completeFFM());
    FrequencyStoreEntry st;
    st.SetType("ST");
    st.SetComment("x < y & z");
    st.SetShortTime_Settings(completeShortTime());
    st.SetAdditionalInfo("more");
    for (const FrequencyStoreEntry &e : {ffm, st}) {
        const RoundTrip<FrequencyStoreEntry> trip = roundTrip(e);
        EXPECT_EQ(e.GetChoiceFrequencyStoreEntry(), trip.fromXml.GetChoiceFrequencyStoreEntry());
        EXPECT_EQ(e.GetChoiceFrequencyStoreEntry(), trip.fromBinary.GetChoiceFrequencyStoreEntry());
        EXPECT_EQ(QString("2.0"), trip.fromBinary.GetInitialVersionLoaded());
    }
    EXPECT_FALSE(ffm == st);
}

TEST(StoreEntryForms, UnknownUsageNameInXml)
{
    const QString doc = entryDocument(" Version=\"2.0\"", "<Usage>Targets</Usage>");
    readUnknownEnumName(doc, "enum is not valid (classname=FrequencyStoreEntry,membername=m_usage)",
                        &FrequencyStoreEntry::IsUsageSet, &FrequencyStoreEntry::GetUsage);
}

TEST(StoreEntryForms, EmptyTypeElementIsEmptyNotNull)
{
    FrequencyStoreEntry e;
    ASSERT_TRUE(e.SetXmlString(entryDocument(" Version=\"2.0\"", "<Type/>" + kFFMElement), true));
    EXPECT_TRUE(e.IsTypeSet());
    EXPECT_FALSE(e.GetType().isNull());
    EXPECT_TRUE(e.GetType().isEmpty());
    EXPECT_TRUE(e.HasData());
}
