// FileHandling: the entry points and their dispatch by list type, the trace,
// writing files (through QSaveFile: a failed write keeps the old file), and
// the notepad, suppress and NOI files in both directions, good and bad. Every
// file is a real file in a temporary folder.

#include "filehandlingtestsupport.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>

#include <cmath>
#include <functional>
#include <type_traits>
#include <vector>

#include <csignal>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

using Morvane::DetectionResultList;
using Morvane::FFM_Settings;
using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::FrequencyStoreListHelper;
using ListType = Morvane::FrequencyStoreListHelper::ListType;

static_assert(std::is_polymorphic<FileHandling>::value, "FileHandling is polymorphic");
static_assert(std::has_virtual_destructor<FileHandling>::value, "");
static_assert(std::is_copy_constructible<FileHandling>::value && std::is_copy_assignable<FileHandling>::value, "");

namespace Morvane {

// The private steps of FileHandling, for the tests.
class FileHandlingTestAccess
{
public:
    static bool ExportCSV(const QString &fileName, const QString &xml, ListType type)
    {
        FileHandling handling;
        return handling.ExportCSV(fileName, xml, type);
    }
    static bool ExportXml(const QString &fileName, const QString &xml)
    {
        FileHandling handling;
        return handling.ExportXml(fileName, xml);
    }
    static QString SetCSVItem(const QString &value, const QString &line, bool endOfRow)
    {
        FileHandling handling;
        QString out = line;
        handling.SetCSVItem(value, out, endOfRow);
        return out;
    }
    static void WriteToFile(const QString &fileName, const QString &text)
    {
        FileHandling handling;
        handling.WriteToFile(fileName, text);
    }
    static QString Row(FrequencyStoreEntry &entry, bool notePad)
    {
        FileHandling handling;
        QString line;
        handling.AppendType(entry, line, false);
        handling.AppendComment(entry, line, false);
        handling.AppendFrequency(entry, line, false);
        handling.AppendBandwidth(entry, line, !notePad);
        if (notePad)
            handling.AppendAnalogDemod(entry, line, true);
        return line;
    }
    static void ExportSuppress(const QString &fileName, FrequencyStoreList &list)
    {
        FileHandling handling;
        FrequencyStoreListHelper helper;
        helper.SetFrequencyStoreList(list);
        handling.ExportSuppress(fileName, helper);
    }
    static void ExportNOI(const QString &fileName, FrequencyStoreList &list)
    {
        FileHandling handling;
        FrequencyStoreListHelper helper;
        helper.SetFrequencyStoreList(list);
        handling.ExportNOI(fileName, helper);
    }
    static void ImportNOI(const QString &fileName, FrequencyStoreList &list)
    {
        FileHandling handling;
        handling.ImportNOI(fileName, list);
    }
};

} // namespace Morvane

using Access = Morvane::FileHandlingTestAccess;
using namespace MorvaneTest;

namespace {

// Two entries: one with everything, one with an empty comment and no
// demodulator. The first one's numbers have more decimals than the files
// keep, unless `exact` asks for numbers the files keep as they are.
FrequencyStoreList twoEntries(bool exact = false)
{
    FrequencyStoreList list;
    list.AppendFrequencyStoreEntry(entry(QStringLiteral("Fixed"), QStringLiteral("Tower A"),
                                         exact ? 7012345.68 : 7012345.678, exact ? 2400.13 : 2400.126,
                                         FFM_Settings::AnalogDemod_USB));
    list.AppendFrequencyStoreEntry(entry(QStringLiteral("Scan"), QStringLiteral(""), 14.5, 3000.0));
    return list;
}

// The same with numbers that the XML form keeps exactly (two decimals).
FrequencyStoreList twoExactEntries()
{
    return twoEntries(true);
}

FrequencyStoreList manyEntries(int count)
{
    FrequencyStoreList list;
    for (int i = 0; i < count; ++i) {
        list.AppendFrequencyStoreEntry(entry(QStringLiteral("Entry%1").arg(i), QStringLiteral("comment number %1").arg(i),
                                             1000000.0 + i, 2500.0, FFM_Settings::AnalogDemod_FM));
    }
    return list;
}

// --- entry points and dispatch ------------------------------------------------------------

TEST_F(FileHandlingTest, ImportCSVOfATypeWithoutACaseSucceedsAndLeavesTheList)
{
    const QString file = write("good.csv", "Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;c;1;2;AM;\n");
    for (int value : {9, -1, 42}) {
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        EXPECT_TRUE(FileHandling().ImportCSV(file, list, ListType(value))) << value;
        EXPECT_EQ(before, list) << value;
    }
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileHandlingTest, ImportFrequencyStoreListOfAMissingCSVFileNeitherThrowsNorReports)
{
    const QString missing = path("missing.csv");
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    EXPECT_NO_THROW(FileHandling().ImportFrequencyStoreList(true, missing, list, NotePad));
    EXPECT_EQ(before, list);
    // Only the trace tells.
    EXPECT_EQ(QStringList{importError + QStringLiteral("Can't open file for reading: '") + missing + QLatin1Char('\'')},
              texts());
}

TEST_F(FileHandlingTest, CSVExportWithAnInvalidTypeTracesReturnsFalseAndWritesNoFile)
{
    FrequencyStoreList list = twoEntries();
    for (int value : {-1, 9}) {
        lines.clear();
        const QString file = path("invalid.csv");
        EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, file, list, ListType(value))) << value;
        EXPECT_EQ(QStringList{invalidType}, texts()) << value;
        EXPECT_FALSE(QFileInfo::exists(file)) << value;
    }
    EXPECT_TRUE(folder().isEmpty());
}

TEST_F(FileHandlingTest, XmlExportOfATransducerListWritesXmlAsForAnyType)
{
    FrequencyStoreList list = twoExactEntries();
    ASSERT_TRUE(list.SaveXml(path("reference.xml")));
    const QByteArray reference = read(path("reference.xml"));
    ASSERT_FALSE(reference.isEmpty());

    EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(false, path("transducer.xml"), list, TransducerList));
    EXPECT_EQ(reference, read(path("transducer.xml")));
    EXPECT_TRUE(FileHandling().ExportFrequencyStoreList(false, path("invalid.xml"), list, ListType(-1)));
    EXPECT_EQ(reference, read(path("invalid.xml")));
    EXPECT_TRUE(lines.empty());

    FrequencyStoreList back;
    EXPECT_TRUE(FileHandling().ImportXml(path("transducer.xml"), back));
    EXPECT_EQ(list, back);
}

TEST_F(FileHandlingTest, ExportToAPathThatCannotBeOpenedReturnsFalseAndDoesNotThrow)
{
    FrequencyStoreList list = twoEntries();
    const QString csv = path("no-such-folder/list.csv");
    bool result = true;
    EXPECT_NO_THROW(result = FileHandling().ExportFrequencyStoreList(true, csv, list, NotePad));
    EXPECT_FALSE(result);
    EXPECT_EQ(QStringList{exportError + QStringLiteral("Can't open file for writing: '") + csv + QLatin1Char('\'')},
              texts());

    lines.clear();
    const QString xml = path("no-such-folder/list.xml");
    result = true;
    EXPECT_NO_THROW(result = FileHandling().ExportFrequencyStoreList(false, xml, list, NotePad));
    EXPECT_FALSE(result);
    EXPECT_EQ(QStringList{xmlError + QStringLiteral("Can't write file: '") + xml + QLatin1Char('\'')}, texts());

    // A folder in the file's place cannot be opened as a file either.
    lines.clear();
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("taken.csv")));
    EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, path("taken.csv"), list, Suppress));
    EXPECT_EQ(QStringList{exportError + QStringLiteral("Can't open file for writing: '") + path("taken.csv")
                          + QLatin1Char('\'')},
              texts());
    EXPECT_TRUE(QFileInfo(path("taken.csv")).isDir());
    EXPECT_EQ(QStringList{QStringLiteral("taken.csv")}, folder());
}

TEST_F(FileHandlingTest, ExportedSuppressAndNOIFilesHaveOneFieldMorePerRowThanTheHeaderAndDoNotImport)
{
    FrequencyStoreList list = twoEntries();
    for (ListType type : {Suppress, NOIFrequencies}) {
        lines.clear();
        const QString file = path(type == Suppress ? "suppress.csv" : "noi.csv");
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, file, list, type));
        const QByteArray bytes = read(file);
        EXPECT_EQ(QByteArray("Type;Comment;Frequency;IFBandwidth\n"
                             "Fixed;Tower A;7012345.68;2400.13;\n"
                             "Scan;---;14.50;3000.00;\n"),
                  bytes);
        const QList<QByteArray> rows = bytes.split('\n');
        ASSERT_EQ(4, rows.size()); // header, two rows, and nothing after the last line feed
        EXPECT_EQ(4, rows[0].split(';').size());
        EXPECT_EQ(5, rows[1].split(';').size());
        EXPECT_EQ(5, rows[2].split(';').size());

        FrequencyStoreList target = holdingOne();
        const FrequencyStoreList before = target;
        EXPECT_FALSE(FileHandling().ImportCSV(file, target, type));
        EXPECT_EQ(before, target);
        EXPECT_EQ(QStringList{importError + corrupt}, texts());
    }
}

TEST_F(FileHandlingTest, TransducerListAndDetectionResultHaveNoCSVImportAndTransducerListNoExport)
{
    const QString file = write("good.csv", "Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;c;1;2;AM;\n");
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    EXPECT_FALSE(FileHandling().ImportCSV(file, list, DetectionResult));
    EXPECT_FALSE(FileHandling().ImportCSV(file, list, TransducerList));
    EXPECT_EQ(before, list);
    EXPECT_EQ((QStringList{QStringLiteral("detection results not imported"), transducer}), texts());

    lines.clear();
    EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, path("transducer.csv"), list, TransducerList));
    EXPECT_EQ(QStringList{transducer}, texts());
    EXPECT_FALSE(QFileInfo::exists(path("transducer.csv")));
}

TEST_F(FileHandlingTest, ExportCSVOfAnXmlTextWritesNothingAndReturnsTrue)
{
    FrequencyStoreList list = twoEntries();
    const QString xml = list.GetXmlString();
    for (ListType type : {NotePad, Suppress, TransducerList}) {
        lines.clear();
        EXPECT_TRUE(Access::ExportCSV(path("fromxml.csv"), xml, type));
        // The type is not given to the list: the inner export meets -1.
        EXPECT_EQ(QStringList{invalidType}, texts());
        EXPECT_FALSE(QFileInfo::exists(path("fromxml.csv")));
    }
    lines.clear();
    EXPECT_TRUE(Access::ExportCSV(path("fromxml.csv"), QStringLiteral("not xml at all"), NotePad));
    EXPECT_EQ(QStringList{invalidType}, texts());
    EXPECT_TRUE(folder().isEmpty());
}

TEST_F(FileHandlingTest, ExportXmlOfATextWritesItOrFailsWithATrace)
{
    const QString text = QString::fromUtf8("<a>\xc3\xa4\xe2\x82\xac</a>\n");
    EXPECT_TRUE(Access::ExportXml(path("text.xml"), text));
    EXPECT_EQ(text.toUtf8(), read(path("text.xml")));
    EXPECT_TRUE(lines.empty());
    const QString bad = path("missing/text.xml");
    EXPECT_FALSE(Access::ExportXml(bad, text));
    EXPECT_EQ(QStringList{xmlError + QStringLiteral("Can't open file for writing: '") + bad + QLatin1Char('\'')},
              texts());
}

TEST_F(FileHandlingTest, IsValidFormatTellsWhetherAFreshListLoadsTheFileAsXml)
{
    FrequencyStoreList list = twoExactEntries();
    ASSERT_TRUE(list.SaveXml(path("list.xml")));
    EXPECT_TRUE(FileHandling().IsValidFormat(path("list.xml")));
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("list.csv"), list, NotePad));
    EXPECT_FALSE(FileHandling().IsValidFormat(path("list.csv")));
    EXPECT_FALSE(FileHandling().IsValidFormat(path("missing.xml")));
    // A document whose record fails throws in LoadXml: false, and no trace.
    QByteArray bad = read(path("list.xml"));
    ASSERT_TRUE(bad.contains("</FrequencyStoreList>"));
    bad.replace("</FrequencyStoreList>", "<Usage>NoSuchUsage</Usage></FrequencyStoreList>");
    const QString badFile = write("bad.xml", bad);
    EXPECT_FALSE(FileHandling().IsValidFormat(badFile));
    EXPECT_TRUE(lines.empty());

    // The XML imports catch nothing and add to nothing: they load.
    FrequencyStoreList target;
    EXPECT_THROW(FileHandling().ImportXml(badFile, target), ORBELIN::OutOfRangeException);
    EXPECT_THROW(FileHandling().ImportFrequencyStoreList(false, badFile, target, NotePad), ORBELIN::OutOfRangeException);
    EXPECT_FALSE(FileHandling().ImportXml(path("missing.xml"), target));
    FileHandling().ImportFrequencyStoreList(false, path("list.xml"), target, TransducerList);
    EXPECT_EQ(list, target);
    EXPECT_TRUE(lines.empty());
}

// --- the trace ---------------------------------------------------------------------------------

TEST_F(FileHandlingTest, FailuresAreTracedOnlyWithBit0x20)
{
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    for (unsigned mask : {0u, ~ErrorHandler::TraceErrors, 0x1fu}) {
        ErrorHandler::Instance()->SetTraceMask(mask);
        EXPECT_FALSE(FileHandling().ImportCSV(path("missing.csv"), list, NotePad));
        EXPECT_FALSE(FileHandling().ImportCSV(path("missing.csv"), list, DetectionResult));
        EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, path("x.csv"), list, ListType(-1)));
        EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(true, path("x.csv"), list, TransducerList));
        EXPECT_FALSE(FileHandling().ExportFrequencyStoreList(false, path("missing/x.xml"), list, NotePad));
        EXPECT_TRUE(lines.empty()) << mask;
    }
    EXPECT_EQ(before, list);
    ErrorHandler::Instance()->SetTraceMask(ErrorHandler::TraceErrors | 0x3);
    EXPECT_FALSE(FileHandling().ImportCSV(path("missing.csv"), list, DetectionResult));
    EXPECT_EQ(QStringList{QStringLiteral("detection results not imported")}, texts());
}

TEST_F(FileHandlingTest, TraceLinesCarryTheSourcePathAndTheLineOfTheCall)
{
    FrequencyStoreList list = holdingOne();
    FileHandling().ImportCSV(path("missing.csv"), list, NotePad);
    FileHandling().ImportCSV(path("missing.csv"), list, DetectionResult);
    FileHandling().ImportCSV(path("missing.csv"), list, TransducerList);
    FileHandling().ExportFrequencyStoreList(true, path("x.csv"), list, ListType(-1));
    FileHandling().ExportFrequencyStoreList(true, path("x.csv"), list, TransducerList);
    FileHandling().ExportFrequencyStoreList(true, path("missing/x.csv"), list, NotePad);
    FileHandling().ExportFrequencyStoreList(false, path("missing/x.xml"), list, NotePad);
    ASSERT_EQ(7u, lines.size());

    QFile source(QStringLiteral(MORVANE_TEST_DATA "/../../frequencystore/filehandling.cpp"));
    ASSERT_TRUE(source.open(QIODevice::ReadOnly | QIODevice::Text));
    const QList<QByteArray> sourceLines = source.readAll().split('\n');
    // Each trace names a line of the source that makes that trace; the texts
    // start with these words there.
    const char *const words[] = {"Import: Cannot export",  "detection results not imported",
                                 "find application",       "as ListType is invalid!!",
                                 "find application",       "ExportCSV: Cannot export frequency store to file as error",
                                 "ExportXml:: Cannot export"};
    std::vector<unsigned short> seen;
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(QStringLiteral("frequencystore/filehandling"), lines[i].file);
        ASSERT_GT(lines[i].line, 0);
        ASSERT_LE(int(lines[i].line), sourceLines.size());
        const QByteArray code = sourceLines.at(lines[i].line - 1);
        EXPECT_TRUE(code.contains("FILEHANDLING_TRACE(")) << i << ": " << code.constData();
        EXPECT_TRUE(code.contains(words[i])) << i << ": " << code.constData();
        seen.push_back(lines[i].line);
    }
    // The two places that trace the transducer text are two lines.
    EXPECT_NE(seen[2], seen[4]);
}

// --- small steps -----------------------------------------------------------------------------------

TEST_F(FileHandlingTest, SetCSVItemAppendsTheCellAndItsSeparator)
{
    EXPECT_EQ(QStringLiteral("a;"), Access::SetCSVItem(QStringLiteral("a"), QString(), false));
    EXPECT_EQ(QStringLiteral("---;"), Access::SetCSVItem(QStringLiteral(""), QString(), false));
    EXPECT_EQ(QStringLiteral("---;"), Access::SetCSVItem(QString(), QString(), false));
    EXPECT_EQ(QStringLiteral("x;y;\n"), Access::SetCSVItem(QStringLiteral("y"), QStringLiteral("x;"), true));
    EXPECT_EQ(QStringLiteral("x;---;\n"), Access::SetCSVItem(QString(), QStringLiteral("x;"), true));
    // No quoting: the text goes in as it is.
    EXPECT_EQ(QStringLiteral("a;b;"), Access::SetCSVItem(QStringLiteral("a;b"), QString(), false));
}

TEST_F(FileHandlingTest, RowsOfTheAppendFunctionsAndTheEntryLeftAsItWas)
{
    FrequencyStoreEntry full = entry(QStringLiteral("T"), QStringLiteral("c"), -12.345, 0.005, FFM_Settings::AnalogDemod_UNKNOWN);
    EXPECT_EQ(QStringLiteral("T;c;-12.35;0.01;UNKNOWN;\n"), Access::Row(full, true));
    EXPECT_EQ(QStringLiteral("T;c;-12.35;0.01;\n"), Access::Row(full, false));
    // Frequency and IFBandwidth are read whether set or not.
    FrequencyStoreEntry bare;
    bare.SetType(QStringLiteral("Bare"));
    const QString expected = QStringLiteral("Bare;---;%1;%2;---;\n")
                                 .arg(bare.GetFFM_Settings().GetFrequency().GetValue(), 0, 'f', 2)
                                 .arg(bare.GetFFM_Settings().GetIFBandwidth().GetValue(), 0, 'f', 2);
    EXPECT_EQ(expected, Access::Row(bare, true));
}

TEST_F(FileHandlingTest, WriteToFileWritesUtf8WithoutByteOrderMarkAndReplacesTheWholeFile)
{
    const QString file = write("text.csv", QByteArray(5000, 'z'));
    const QString text = QString::fromUtf8("Typ;\xc3\x84nderung \xe2\x82\xac \xf0\x9f\x93\xbb;\nzwei;\n");
    Access::WriteToFile(file, text);
    EXPECT_EQ(QByteArray("Typ;\xc3\x84nderung \xe2\x82\xac \xf0\x9f\x93\xbb;\nzwei;\n"), read(file));
    EXPECT_EQ(QStringList{QStringLiteral("text.csv")}, folder());
    EXPECT_TRUE(testsupport::throwsWith<ORBELIN::OrbelinException>(
        [&] { Access::WriteToFile(path("nowhere/text.csv"), text); },
        QStringLiteral("Can't open file for writing: '") + path("nowhere/text.csv") + QLatin1Char('\'')));
}

TEST_F(FileHandlingTest, SaveXmlReplacesTheWholeFile)
{
    FrequencyStoreList list = twoEntries();
    ASSERT_TRUE(list.SaveXml(path("reference.xml")));
    const QString file = write("list.xml", QByteArray(100000, 'z'));
    ASSERT_TRUE(list.SaveXml(file));
    EXPECT_EQ(read(path("reference.xml")), read(file));
    EXPECT_EQ((QStringList{QStringLiteral("list.xml"), QStringLiteral("reference.xml")}), folder());
    EXPECT_FALSE(list.SaveXml(path("missing/list.xml")));
}

// --- a write that fails after the file was opened -----------------------------------------------

// Runs `work` in a child process whose files cannot grow beyond `limit`
// bytes (RLIMIT_FSIZE binds root too: write() then fails with EFBIG, as on a
// full disk). Gives the child's exit code, or 100 plus the signal.
int withFileSizeLimit(rlim_t limit, const std::function<int()> &work)
{
    const pid_t pid = fork();
    if (pid < 0)
        return -1;
    if (pid == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        struct rlimit rl;
        rl.rlim_cur = limit;
        rl.rlim_max = limit;
        if (setrlimit(RLIMIT_FSIZE, &rl) != 0)
            _exit(90);
        _exit(work());
    }
    int status = 0;
    if (waitpid(pid, &status, 0) != pid)
        return -2;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

TEST_F(FileHandlingTest, ACSVExportThatFailsWhileWritingLeavesTheOldFileIntact)
{
    const QByteArray old("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nOld;kept;1.00;2.00;AM;\n");
    // 100 entries stay in the save file's buffer until the flush; 2,000 go
    // past it in one write.
    for (int count : {100, 2000}) {
        const QString file = write("list.csv", old);
        FrequencyStoreList big = manyEntries(count);
        FrequencyStoreList small = manyEntries(3);
        const QString expected = exportError + QStringLiteral("Can't write file: '") + file + QLatin1Char('\'');
        const int code = withFileSizeLimit(4096, [&]() {
            // Within the limit a write works: it is the size that fails.
            if (!FileHandling().ExportFrequencyStoreList(true, path("small.csv"), small, NotePad))
                return 3;
            lines.clear();
            if (FileHandling().ExportFrequencyStoreList(true, file, big, NotePad))
                return 1;
            return lines.size() == 1 && lines[0].text == expected ? 0 : 2;
        });
        EXPECT_EQ(0, code) << count << " entries (1: the export succeeded, 2: other trace, 3: small export failed)";
        const QByteArray after = read(file);
        EXPECT_TRUE(after == old) << count << " entries: the file now has " << after.size() << " bytes";
        // The temporary file is gone: the folder holds the old file and the small one.
        EXPECT_EQ((QStringList{QStringLiteral("list.csv"), QStringLiteral("small.csv")}), folder()) << count;
        // Without the limit the same export goes through.
        ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, file, big, NotePad));
        EXPECT_GT(read(file).size(), 4096);
        QFile::remove(path("small.csv"));
    }
}

TEST_F(FileHandlingTest, AnXmlSaveThatFailsWhileWritingLeavesTheOldFileIntact)
{
    const QByteArray old("<FrequencyStoreList/>\n");
    for (int count : {20, 400}) {
        const QString file = write("list.xml", old);
        FrequencyStoreList big = manyEntries(count);
        const int code = withFileSizeLimit(4096, [&]() {
            if (big.SaveXml(file))
                return 1;
            lines.clear();
            if (FileHandling().ExportFrequencyStoreList(false, file, big, NotePad))
                return 2;
            const QString expected = xmlError + QStringLiteral("Can't write file: '") + file + QLatin1Char('\'');
            return lines.size() == 1 && lines[0].text == expected ? 0 : 3;
        });
        EXPECT_EQ(0, code) << count << " entries (1: SaveXml succeeded, 2: the export succeeded, 3: other trace)";
        const QByteArray after = read(file);
        EXPECT_TRUE(after == old) << count << " entries: the file now has " << after.size() << " bytes";
        EXPECT_EQ(QStringList{QStringLiteral("list.xml")}, folder()) << count;
        ASSERT_TRUE(big.SaveXml(file));
        EXPECT_GT(read(file).size(), 4096);
    }
}

// --- notepad, suppress and NOI files ----------------------------------------------------------------

TEST_F(FileHandlingTest, NotePadListOfTwoEntriesRoundTripsWithNumbersRoundedToTwoDecimals)
{
    FrequencyStoreList list = twoEntries();
    const FrequencyStoreList before = list;
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("notepad.csv"), list, NotePad));
    EXPECT_EQ(before, list);
    EXPECT_EQ(QByteArray("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"
                         "Fixed;Tower A;7012345.68;2400.13;USB;\n"
                         "Scan;---;14.50;3000.00;---;\n"),
              read(path("notepad.csv")));

    FrequencyStoreList back;
    ASSERT_TRUE(FileHandling().ImportCSV(path("notepad.csv"), back, NotePad));
    EXPECT_TRUE(lines.empty());
    ASSERT_EQ(2, entries(back).size());
    const FrequencyStoreEntry &first = entries(back)[0];
    const FrequencyStoreEntry &second = entries(back)[1];
    EXPECT_EQ(QStringLiteral("Fixed"), first.GetType());
    EXPECT_EQ(QStringLiteral("Tower A"), first.GetComment());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_FFM_Settings, first.GetChoiceFrequencyStoreEntry());
    EXPECT_EQ(7012345.68, first.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(2400.13, first.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_EQ(FFM_Settings::AnalogDemod_USB, first.GetFFM_Settings().GetAnalogDemod());
    EXPECT_EQ(QStringLiteral("Scan"), second.GetType());
    EXPECT_FALSE(second.IsCommentSet());
    EXPECT_EQ(14.5, second.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(3000.0, second.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_FALSE(second.GetFFM_Settings().IsAnalogDemodSet());
    // Nothing else is filled in.
    EXPECT_FALSE(first.IsUsageSet());
    EXPECT_FALSE(first.IsIDSet());
    EXPECT_FALSE(first.IsAntennaSet());
    EXPECT_FALSE(first.GetFFM_Settings().IsLevelSet());
    EXPECT_FALSE(first.GetFFM_Settings().GetFrequency().IsMinSet());

    // And it exports to the same bytes again.
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("again.csv"), back, NotePad));
    EXPECT_EQ(read(path("notepad.csv")), read(path("again.csv")));
}

// The files write their numbers as QString::arg(value, 0, 'f', 2) writes
// them: halves of the last digit, values that lie just beside one, negative
// zero, large and small magnitudes and random values.
TEST_F(FileHandlingTest, NotePadNumbersAreWhatQStringArgWritesInFixedNotation)
{
    QVector<double> values = {0.125, 2.675, 1.005, -0.005, -0.004, -0.0, 0.0, 1e21, -1e-9, 123456789.995, 0.0049999999};
    QRandomGenerator random(20261124);
    for (int i = 0; i < 400; ++i)
        values << (random.generateDouble() - 0.5) * std::pow(10.0, random.bounded(-4, 16));
    FrequencyStoreList list;
    QString expected = notePadHeader;
    for (int i = 0; i + 1 < values.size(); i += 2) {
        list.AppendFrequencyStoreEntry(entry(QStringLiteral("T"), QStringLiteral("c"), values[i], values[i + 1]));
        expected += QStringLiteral("T;c;%1;%2;---;\n")
                        .arg(QStringLiteral("%1").arg(values[i], 0, 'f', 2), QStringLiteral("%1").arg(values[i + 1], 0, 'f', 2));
    }
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("numbers.csv"), list, NotePad));
    EXPECT_EQ(expected.toUtf8(), read(path("numbers.csv")));
}

TEST_F(FileHandlingTest, AnEntryWithAnEmptyCommentExportsThePlaceholderAndImportsWithoutComment)
{
    FrequencyStoreList list;
    list.AppendFrequencyStoreEntry(entry(QStringLiteral("A"), QStringLiteral(""), 1.0, 2.0));
    list.AppendFrequencyStoreEntry(entry(QStringLiteral("B"), QString(), 3.0, 4.0));
    ASSERT_TRUE(entries(list)[0].IsCommentSet());
    ASSERT_FALSE(entries(list)[1].IsCommentSet());
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("n.csv"), list, NotePad));
    EXPECT_EQ((notePadHeader + QStringLiteral("A;---;1.00;2.00;---;\nB;---;3.00;4.00;---;\n")).toUtf8(),
              read(path("n.csv")));
    FrequencyStoreList back;
    ASSERT_TRUE(FileHandling().ImportCSV(path("n.csv"), back, NotePad));
    ASSERT_EQ(2, entries(back).size());
    EXPECT_FALSE(entries(back)[0].IsCommentSet());
    EXPECT_FALSE(entries(back)[1].IsCommentSet());
}

TEST_F(FileHandlingTest, APlaceholderInFrequencyImportsAsZeroAndPresent)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;c;---;---;AM;\n", list));
    ASSERT_EQ(1, entries(list).size());
    const FFM_Settings &settings = entries(list)[0].GetFFM_Settings();
    EXPECT_TRUE(entries(list)[0].IsFFM_SettingsSet());
    EXPECT_TRUE(settings.IsFrequencySet());
    EXPECT_TRUE(settings.GetFrequency().IsValueSet());
    EXPECT_EQ(0.0, settings.GetFrequency().GetValue());
    EXPECT_TRUE(settings.GetIFBandwidth().IsValueSet());
    EXPECT_EQ(0.0, settings.GetIFBandwidth().GetValue());
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("out.csv"), list, NotePad));
    EXPECT_EQ((notePadHeader + QStringLiteral("T;c;0.00;0.00;AM;\n")).toUtf8(), read(path("out.csv")));
}

TEST_F(FileHandlingTest, ANotePadRowWithPlaceholdersInCommentAndAnalogDemodHasNeither)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;---;5;6;---;\n", list));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_FALSE(e.IsCommentSet());
    EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_EQ(5.0, e.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(6.0, e.GetFFM_Settings().GetIFBandwidth().GetValue());
    // "---" is no placeholder in Type.
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n---;---;5;6;---;\n", list));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("---"), entries(list)[1].GetType());
}

TEST_F(FileHandlingTest, AnEmptyNOIListWritesJustItsHeaderAndReadsBackWithoutEntries)
{
    FrequencyStoreList empty;
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("noi.csv"), empty, NOIFrequencies));
    EXPECT_EQ(suppressHeader.toUtf8(), read(path("noi.csv")));
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    EXPECT_TRUE(FileHandling().ImportCSV(path("noi.csv"), list, NOIFrequencies));
    EXPECT_EQ(before, list);
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileHandlingTest, AnUnknownAnalogDemodNameFailsInTheSetterWithValidationOn)
{
    const QByteArray file("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"
                          "A;first;1;2;UNKNOWN;\n"
                          "B;second;3;4;usb;\n"
                          "C;third;5;6;AM;\n");
    FrequencyStoreList list = holdingOne();
    ASSERT_TRUE(list.GetValidate());
    EXPECT_FALSE(import(file, list));
    EXPECT_EQ(QStringList{importError + QStringLiteral("enum is not valid (classname=FFM_Settings,membername=m_analogDemod)")},
              texts());
    // The rows ahead of it stay; "UNKNOWN" is a name of the table.
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("Old"), entries(list)[0].GetType());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_EQ(FFM_Settings::AnalogDemod_UNKNOWN, entries(list)[1].GetFFM_Settings().GetAnalogDemod());
}

TEST_F(FileHandlingTest, AnUnknownAnalogDemodNameFailsTheCheckWithValidationOff)
{
    const QByteArray file("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"
                          "A;first;1;2;FM;\n"
                          "B;second;3;4;Bogus;\n"
                          "C;third;5;6;AM;\n");
    FrequencyStoreList list = holdingOne();
    list.SetValidate(false);
    EXPECT_FALSE(import(file, list));
    // The setter stores the invalid value; the entry's Check finds it.
    EXPECT_EQ(QStringList{importError + QStringLiteral("FFM_Settings: Please set AnalogDemod properly.")}, texts());
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
}

TEST_F(FileHandlingTest, SuppressImportReadsRowsWithoutTrailingSemicolonOrUnderAHeaderWithOne)
{
    for (ListType type : {Suppress, NOIFrequencies}) {
        FrequencyStoreList list;
        ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth\nS;one;1.5;2.5\nT;two;3;4\n", list, type));
        ASSERT_EQ(2, entries(list).size());
        EXPECT_EQ(QStringLiteral("one"), entries(list)[0].GetComment());
        EXPECT_EQ(3.0, entries(list)[1].GetFFM_Settings().GetFrequency().GetValue());
        ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;\nU;three;5;6;\n", list, type));
        ASSERT_EQ(3, entries(list).size());
        EXPECT_EQ(6.0, entries(list)[2].GetFFM_Settings().GetIFBandwidth().GetValue());
    }
    // The suppress import does not look at an AnalogDemod column.
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nS;c;1;2;Bogus;\n", list, Suppress));
    ASSERT_EQ(1, entries(list).size());
    EXPECT_FALSE(entries(list)[0].GetFFM_Settings().IsAnalogDemodSet());
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileHandlingTest, SuppressAndNOIAreOneFormatAndOneImport)
{
    FrequencyStoreList list = twoEntries();
    Access::ExportSuppress(path("a.csv"), list);
    Access::ExportNOI(path("b.csv"), list);
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("c.csv"), list, Suppress));
    EXPECT_EQ(read(path("a.csv")), read(path("b.csv")));
    EXPECT_EQ(read(path("a.csv")), read(path("c.csv")));

    const QString file = write("in.csv", "Type;Comment;Frequency;IFBandwidth\nS;one;1.5;2.5\n");
    FrequencyStoreList viaNOI;
    Access::ImportNOI(file, viaNOI);
    FrequencyStoreList viaSuppress;
    ASSERT_TRUE(FileHandling().ImportCSV(file, viaSuppress, Suppress));
    ASSERT_EQ(1, entries(viaNOI).size());
    EXPECT_EQ(viaSuppress, viaNOI);
}

TEST_F(FileHandlingTest, ColumnsAreFoundByNameInAnyOrderAndAnAbsentOneLeavesItsMemberUnset)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("IFBandwidth;Frequency;Type\n2;1;T\n", list));
    ASSERT_EQ(1, entries(list).size());
    const FrequencyStoreEntry &e = entries(list)[0];
    EXPECT_EQ(QStringLiteral("T"), e.GetType());
    EXPECT_FALSE(e.IsCommentSet());
    EXPECT_EQ(1.0, e.GetFFM_Settings().GetFrequency().GetValue());
    EXPECT_EQ(2.0, e.GetFFM_Settings().GetIFBandwidth().GetValue());
    EXPECT_FALSE(e.GetFFM_Settings().IsAnalogDemodSet());
}

TEST_F(FileHandlingTest, TheExportWorksOnCopiesAndLeavesTheCallersEntriesAlone)
{
    FrequencyStoreList list;
    FrequencyStoreEntry shortTime;
    shortTime.SetType(QStringLiteral("ST"));
    shortTime.GetShortTime_Settings();
    list.SetValidate(false);
    list.AppendFrequencyStoreEntry(shortTime);
    const FrequencyStoreList before = list;
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("st.csv"), list, NotePad));
    EXPECT_EQ(before, list);
    const FrequencyStoreEntry &kept = entries(list)[0];
    EXPECT_FALSE(kept.IsFFM_SettingsSet());
    EXPECT_EQ(FrequencyStoreEntry::ChoiceFrequencyStoreEntry_ShortTime_Settings, kept.GetChoiceFrequencyStoreEntry());
    EXPECT_TRUE(read(path("st.csv")).startsWith(notePadHeader.toUtf8() + "ST;---;"));
}

// --- bad input -----------------------------------------------------------------------------------------

TEST_F(FileHandlingTest, BadInputAMissingFile)
{
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    const bool result = FileHandling().ImportCSV(path("missing.csv"), list, NotePad);
    EXPECT_TRUE(refused(result, before, list, texts(),
                        QStringLiteral("Can't open file for reading: '") + path("missing.csv") + QLatin1Char('\'')));
}

TEST_F(FileHandlingTest, BadInputAnEmptyFileAndAFileOfComments)
{
    const struct
    {
        const char *text;
    } cases[] = {{""}, {"# only\n# comments\n"}, {"\nType;Comment;Frequency;IFBandwidth;AnalogDemod;\nT;c;1;2;AM;\n"}};
    for (const auto &c : cases) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        const bool result = import(c.text, list, Suppress);
        EXPECT_TRUE(refused(result, before, list, texts(), path("in.csv") + QStringLiteral(" is empty!")))
            << c.text;
    }
}

TEST_F(FileHandlingTest, BadInputABinaryFile)
{
    QByteArray bytes("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\0;\xff\xfe\n\0;;\x80\x81\n", 30);
    for (int i = 0; i < 2000; ++i)
        bytes.append(char((i * 7919) % 256));
    for (ListType type : {NotePad, Suppress, NOIFrequencies}) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        bool result = true;
        EXPECT_NO_THROW(result = import(bytes, list, type));
        EXPECT_TRUE(refused(result, before, list, texts(), QString()));
    }
}

TEST_F(FileHandlingTest, BadInputAFileWithoutATypeColumnIsRefusedAsAWhole)
{
    const char *const files[] = {
        "Comment;Frequency;IFBandwidth;AnalogDemod;\nc;1;2;AM;\nd;3;4;FM;\n",
        "Comment;Frequency;IFBandwidth\n",
        "type;Comment;Frequency;IFBandwidth\nT;c;1;2\n",
    };
    for (const char *text : files) {
        for (ListType type : {NotePad, Suppress}) {
            lines.clear();
            FrequencyStoreList list = holdingOne();
            const FrequencyStoreList before = list;
            const bool result = import(text, list, type);
            EXPECT_TRUE(refused(result, before, list, texts(),
                                QStringLiteral("Data is corrupted. The column 'Type' is missing!")))
                << text;
        }
    }
    // The column alone, with no rows, is a list of no rows.
    lines.clear();
    FrequencyStoreList list = holdingOne();
    EXPECT_TRUE(import("Type\n", list));
    EXPECT_EQ(1, entries(list).size());
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileHandlingTest, BadInputRowsWithTooManyOrTooFewFieldsAddNothing)
{
    const char *const files[] = {
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nA;a;1;2;AM;\nB;b;3;4;FM;extra;\n",
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nA;a;1;2;AM;\nB;b;3;4;FM\n",
        "Type;Comment;Frequency;IFBandwidth;AnalogDemod;\nA;a;1;2;AM;\n# not a comment here\n",
    };
    for (const char *text : files) {
        lines.clear();
        FrequencyStoreList list = holdingOne();
        const FrequencyStoreList before = list;
        const bool result = import(text, list);
        EXPECT_TRUE(refused(result, before, list, texts(), corrupt)) << text;
    }
}

TEST_F(FileHandlingTest, BadInputASemicolonInsideACommentCorruptsItsRow)
{
    FrequencyStoreList source;
    source.AppendFrequencyStoreEntry(entry(QStringLiteral("A"), QStringLiteral("fine"), 1.0, 2.0));
    source.AppendFrequencyStoreEntry(entry(QStringLiteral("B"), QStringLiteral("left;right"), 3.0, 4.0));
    ASSERT_TRUE(FileHandling().ExportFrequencyStoreList(true, path("semicolon.csv"), source, NotePad));
    EXPECT_EQ((notePadHeader + QStringLiteral("A;fine;1.00;2.00;---;\nB;left;right;3.00;4.00;---;\n")).toUtf8(),
              read(path("semicolon.csv")));
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    const bool result = FileHandling().ImportCSV(path("semicolon.csv"), list, NotePad);
    EXPECT_TRUE(refused(result, before, list, texts(), corrupt));
}

TEST_F(FileHandlingTest, BadInputNumbersThatAreNoNumbersReadAsZero)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"
                       "A;;abc;;---;\n"
                       "B;b;1,5;12 kHz;---;\n"
                       "C;c;1e3;-0.5;---;\n",
                       list));
    ASSERT_EQ(3, entries(list).size());
    const double expected[3][2] = {{0.0, 0.0}, {0.0, 0.0}, {1000.0, -0.5}};
    for (int i = 0; i < 3; ++i) {
        const FFM_Settings &settings = entries(list)[i].GetFFM_Settings();
        EXPECT_TRUE(settings.GetFrequency().IsValueSet()) << i;
        EXPECT_TRUE(settings.GetIFBandwidth().IsValueSet()) << i;
        EXPECT_EQ(expected[i][0], settings.GetFrequency().GetValue()) << i;
        EXPECT_EQ(expected[i][1], settings.GetIFBandwidth().GetValue()) << i;
    }
    // An empty comment cell is an empty comment, not a missing one.
    EXPECT_TRUE(entries(list)[0].IsCommentSet());
    EXPECT_TRUE(entries(list)[0].GetComment().isEmpty());
    EXPECT_FALSE(entries(list)[0].GetComment().isNull());
    EXPECT_TRUE(lines.empty());
}

TEST_F(FileHandlingTest, BadInputAnEmptyTypeEndsTheImportAndKeepsTheRowsAheadOfIt)
{
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n"
                        "A;a;1;2;AM;\n"
                        "B;b;3;4;FM;\n"
                        ";c;5;6;AM;\n"
                        "D;d;7;8;AM;\n",
                        list));
    EXPECT_EQ(QStringList{importError + QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!")},
              texts());
    ASSERT_EQ(3, entries(list).size());
    EXPECT_EQ(QStringLiteral("Old"), entries(list)[0].GetType());
    EXPECT_EQ(QStringLiteral("A"), entries(list)[1].GetType());
    EXPECT_EQ(QStringLiteral("B"), entries(list)[2].GetType());
    EXPECT_EQ(QStringLiteral("kept"), list.GetName());
}

TEST_F(FileHandlingTest, BadInputARowThatFailsItsCheckKeepsTheRowsAheadOfIt)
{
    // Without IFBandwidth the settings are incomplete: with validation on the
    // entry fails its Check.
    FrequencyStoreList list = holdingOne();
    EXPECT_FALSE(import("Type;Comment;Frequency\nA;a;1\n", list));
    EXPECT_EQ(QStringList{importError
                          + QStringLiteral("FrequencyStoreEntry:Check failed. The mandatory member m_fFM_Settings is not "
                                           "set or mandatory data of the member is not set.")},
              texts());
    EXPECT_EQ(1, entries(list).size());
}

TEST_F(FileHandlingTest, BadInputALineOfMoreThan10240CharactersIsCutAndRefused)
{
    const QByteArray head("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n");
    QByteArray row("T;");
    const QByteArray tail(";1;2;AM;");
    row += QByteArray(10241 - row.size() - tail.size(), 'x');
    row += tail;
    ASSERT_EQ(10241, row.size());
    FrequencyStoreList list = holdingOne();
    const FrequencyStoreList before = list;
    bool result = import(head + "A;a;1;2;AM;\n" + row + "\n", list);
    EXPECT_TRUE(refused(result, before, list, texts(), corrupt));

    // A header of that length too.
    lines.clear();
    QByteArray longHeader("Type;Comment;Frequency;IFBandwidth;AnalogDemod;");
    longHeader += QByteArray(10241 - longHeader.size(), 'h');
    ASSERT_EQ(10241, longHeader.size());
    result = import(longHeader + "\nA;a;1;2;AM;\n", list);
    EXPECT_TRUE(refused(result, before, list, texts(), corrupt));
}

TEST_F(FileHandlingTest, CarriageReturnLineEndsReadAsLineFeeds)
{
    FrequencyStoreList list;
    ASSERT_TRUE(import("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\r\nA;a;1;2;AM;\r\nB;b;3;4;FM;\r\n", list));
    ASSERT_EQ(2, entries(list).size());
    EXPECT_EQ(QStringLiteral("B"), entries(list)[1].GetType());
    EXPECT_EQ(FFM_Settings::AnalogDemod_FM, entries(list)[1].GetFFM_Settings().GetAnalogDemod());
}

} // namespace
