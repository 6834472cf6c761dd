// The CSV reader: comment lines, header, rows, the three failures, line ends,
// byte order marks, long lines, appending, and damaged files. Every file is
// written into a temporary folder and read back through QFile and QTextStream.

#include "testsupport.h"

#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include <initializer_list>
#include <random>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

using Morvane::CSVColumn;
using Morvane::CSVFileLoader;
using ORBELIN::OrbelinException;
using testsupport::throwsWith;

static_assert(std::is_polymorphic<CSVColumn>::value, "CSVColumn is polymorphic");
static_assert(std::has_virtual_destructor<CSVColumn>::value, "");
static_assert(std::is_copy_constructible<CSVColumn>::value && std::is_copy_assignable<CSVColumn>::value, "");
static_assert(std::is_polymorphic<CSVFileLoader>::value, "CSVFileLoader is polymorphic");
static_assert(std::has_virtual_destructor<CSVFileLoader>::value, "");
static_assert(std::is_copy_constructible<CSVFileLoader>::value && std::is_copy_assignable<CSVFileLoader>::value, "");
static_assert(std::is_same<decltype(std::declval<const CSVColumn &>().GetValues()), const QStringList *>::value, "");
static_assert(std::is_same<decltype(std::declval<const CSVColumn &>().GetName()), QString>::value, "");
static_assert(std::is_same<decltype(std::declval<const CSVFileLoader &>().GetColumn(QString())), const CSVColumn *>::value,
              "");

namespace {

const QString corrupt = QStringLiteral("Data is corrupt!. It can't be assigned to the header!");

QString emptyMessage(const QString &name)
{
    return name + QStringLiteral(" is empty!");
}

QString openMessage(const QString &name)
{
    return QStringLiteral("Can't open file for reading: '") + name + QLatin1Char('\'');
}

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

// The values of the first column of that name, or a failure when there is none.
QStringList valuesOf(const CSVFileLoader &loader, const QString &name)
{
    const CSVColumn *column = loader.GetColumn(name);
    if (!column) {
        ADD_FAILURE() << "no column \"" << name.toStdString() << "\"";
        return QStringList();
    }
    EXPECT_EQ(name, column->GetName());
    return *column->GetValues();
}

QStringList valuesOf(const CSVFileLoader &loader, const char *name)
{
    return valuesOf(loader, QString::fromUtf8(name));
}

// Whether the loader holds exactly `count` columns, found out through the
// public interface alone: a copy of it takes one header name more, and then a
// row of count + 1 cells is accepted only if there were `count` before.
::testing::AssertionResult hasColumns(const CSVFileLoader &loader, int count)
{
    CSVFileLoader probe = loader;
    QStringList cells;
    for (int i = 0; i <= count; ++i)
        cells.append(QStringLiteral("x"));
    QString text = QStringLiteral("probe\n") + cells.join(QLatin1Char(';')) + QLatin1Char('\n');
    QTextStream stream(&text, QIODevice::ReadOnly);
    try {
        probe.LoadFile(stream, QStringLiteral("probe"));
    } catch (const OrbelinException &e) {
        return ::testing::AssertionFailure() << "not " << count << " columns: " << e.GetMessage().toStdString();
    }
    return ::testing::AssertionSuccess();
}

// The text in UTF-16 with its byte order mark.
QByteArray utf16WithBom(const QString &text, bool bigEndian)
{
    QByteArray bytes;
    const QString marked = QChar(QChar::ByteOrderMark) + text;
    for (const QChar c : marked) {
        const char high = char(c.unicode() >> 8);
        const char low = char(c.unicode() & 0xff);
        bytes.append(bigEndian ? high : low);
        bytes.append(bigEndian ? low : high);
    }
    return bytes;
}

class CSVFiles : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
    }

    // Writes the bytes as they are into a file of the temporary folder.
    QString write(const char *name, const QByteArray &bytes)
    {
        const QString path = m_dir.filePath(QString::fromLatin1(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            ADD_FAILURE() << "cannot write " << name;
        return path;
    }

    QTemporaryDir m_dir;
};

using CSVFileLoaderTest = CSVFiles;
using CSVEdgeCases = CSVFiles;
using CSVBadInput = CSVFiles;

// --- a model of the reader, for ASCII input ---------------------------------------------

// What the reader must make of a file of 7-bit bytes, worked out on the bytes
// alone: the lines as text mode and readLine(10240) cut them, then comments,
// header and rows.
struct Expected
{
    QStringList names;
    std::vector<QStringList> rows; // the rows taken, each as many cells as names
    QString message;               // the failure, empty for none
};

QString latin1(const QByteArray &bytes)
{
    // Not QString::fromLatin1(QByteArray), which stops at a NUL on Qt 5.
    return QString::fromLatin1(bytes.constData(), int(bytes.size()));
}

QStringList asciiLines(QByteArray bytes)
{
    bytes.replace('\r', QByteArray());
    QStringList lines;
    int start = 0;
    while (start < bytes.size()) {
        const int end = bytes.indexOf('\n', start);
        QByteArray line = bytes.mid(start, end < 0 ? -1 : end - start);
        while (line.size() >= 10240) {
            lines.append(latin1(line.left(10240)));
            line = line.mid(10240);
        }
        // What is left of a line ahead of its line feed is a line, even if
        // empty; at the end of the file only when it holds something.
        if (end >= 0 || !line.isEmpty())
            lines.append(latin1(line));
        if (end < 0)
            break;
        start = end + 1;
    }
    return lines;
}

Expected model(const QByteArray &bytes, const QString &name)
{
    const QStringList lines = asciiLines(bytes);
    Expected expected;
    int i = 0;
    while (i < lines.size() && lines.at(i).startsWith(QLatin1Char('#')))
        ++i;
    if (i >= lines.size() || lines.at(i).isEmpty()) {
        expected.message = emptyMessage(name);
        return expected;
    }
    expected.names = lines.at(i).split(QLatin1Char(';'));
    for (++i; i < lines.size() && !lines.at(i).isEmpty(); ++i) {
        const QStringList cells = lines.at(i).split(QLatin1Char(';'));
        if (cells.size() != expected.names.size()) {
            expected.message = corrupt;
            break;
        }
        expected.rows.push_back(cells);
    }
    return expected;
}

// The loader holds what the model says, column by column.
::testing::AssertionResult matches(const CSVFileLoader &loader, const Expected &expected)
{
    const int count = int(expected.names.size());
    if (!hasColumns(loader, count))
        return ::testing::AssertionFailure() << "not " << count << " columns";
    for (int c = 0; c < count; ++c) {
        const QString &name = expected.names.at(c);
        // The first column of a name is the one found.
        if (expected.names.indexOf(name) != c)
            continue;
        const CSVColumn *column = loader.GetColumn(name);
        if (!column)
            return ::testing::AssertionFailure() << "column " << c << " not found by its name";
        QStringList values;
        for (const QStringList &row : expected.rows)
            values.append(row.at(c));
        if (*column->GetValues() != values)
            return ::testing::AssertionFailure() << "column " << c << " has other values";
    }
    return ::testing::AssertionSuccess();
}

} // namespace

// --- CSVColumn ------------------------------------------------------------------------------

TEST(CSVColumnTest, DefaultHasEmptyNameAndNoValues)
{
    const CSVColumn column;
    EXPECT_TRUE(column.GetName().isEmpty());
    ASSERT_NE(nullptr, column.GetValues());
    EXPECT_TRUE(column.GetValues()->isEmpty());
}

TEST(CSVColumnTest, KeepsNameAndValuesInOrder)
{
    CSVColumn column(QStringLiteral("Frequency"));
    EXPECT_EQ(QStringLiteral("Frequency"), column.GetName());
    column.AddValue(QStringLiteral("100.00"));
    column.AddValue(QString());
    column.AddValue(QStringLiteral(" 2 "));
    EXPECT_EQ(strings({"100.00", "", " 2 "}), *column.GetValues());
    column.SetName(QStringLiteral("IFBandwidth"));
    EXPECT_EQ(QStringLiteral("IFBandwidth"), column.GetName());
    EXPECT_EQ(3, column.GetValues()->size());
}

TEST(CSVColumnTest, CopiesAreIndependent)
{
    CSVColumn original(QStringLiteral("A"));
    original.AddValue(QStringLiteral("1"));
    CSVColumn copy(original);
    copy.AddValue(QStringLiteral("2"));
    copy.SetName(QStringLiteral("B"));
    EXPECT_EQ(QStringLiteral("A"), original.GetName());
    EXPECT_EQ(strings({"1"}), *original.GetValues());
    EXPECT_EQ(strings({"1", "2"}), *copy.GetValues());

    CSVColumn assigned;
    assigned = copy;
    original.AddValue(QStringLiteral("3"));
    EXPECT_EQ(QStringLiteral("B"), assigned.GetName());
    EXPECT_EQ(strings({"1", "2"}), *assigned.GetValues());
    EXPECT_NE(copy.GetValues(), assigned.GetValues());
}

TEST(CSVColumnTest, ValuesPointerIsTheColumnsOwnList)
{
    CSVColumn column(QStringLiteral("A"));
    const QStringList *values = column.GetValues();
    column.AddValue(QStringLiteral("x"));
    EXPECT_EQ(values, column.GetValues());
    EXPECT_EQ(strings({"x"}), *values);
}

// --- CSVFileLoader, well-formed files ---------------------------------------------------------

TEST_F(CSVFileLoaderTest, ReadsHeaderAndRowsIntoColumns)
{
    const QString path = write("list.csv", "Type;Comment;Frequency\nFFM;first;100.00\nDF;;2.5\n");
    CSVFileLoader loader;
    loader.LoadFile(path);
    EXPECT_TRUE(hasColumns(loader, 3));
    EXPECT_EQ(strings({"FFM", "DF"}), valuesOf(loader, "Type"));
    EXPECT_EQ(strings({"first", ""}), valuesOf(loader, "Comment"));
    EXPECT_EQ(strings({"100.00", "2.5"}), valuesOf(loader, "Frequency"));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("Level")));
    EXPECT_TRUE(loader.GetErrorText().isEmpty());
}

TEST_F(CSVFileLoaderTest, ConstructorLoadsTheFile)
{
    const QString path = write("list.csv", "A;B\n1;2\n");
    const CSVFileLoader loader(path);
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(loader, "B"));
}

TEST_F(CSVFileLoaderTest, HeaderAloneGivesColumnsWithoutValues)
{
    const CSVFileLoader loader(write("header.csv", "A;B;C\n"));
    EXPECT_TRUE(hasColumns(loader, 3));
    EXPECT_TRUE(valuesOf(loader, "C").isEmpty());
}

TEST_F(CSVFileLoaderTest, LastRowWithoutLineEndIsRead)
{
    const CSVFileLoader loader(write("noeol.csv", "A;B\n1;2\n3;4"));
    EXPECT_EQ(strings({"1", "3"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2", "4"}), valuesOf(loader, "B"));
}

TEST_F(CSVFileLoaderTest, NothingIsTrimmedOrUnquoted)
{
    const CSVFileLoader loader(write("raw.csv", "A ; B;\"C\"\n 1 ;\"x;y\"\n\t;;\n"));
    EXPECT_TRUE(hasColumns(loader, 3));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("A")));
    EXPECT_EQ(strings({" 1 ", "\t"}), valuesOf(loader, "A "));
    EXPECT_EQ(strings({"\"x", ""}), valuesOf(loader, " B"));
    EXPECT_EQ(strings({"y\"", ""}), valuesOf(loader, "\"C\""));
}

TEST_F(CSVFileLoaderTest, LineOfBlanksIsDataNotTheEnd)
{
    const CSVFileLoader loader(write("blanks.csv", "A\n1\n \n2\n"));
    EXPECT_EQ(strings({"1", " ", "2"}), valuesOf(loader, "A"));
}

TEST_F(CSVFileLoaderTest, ReadsUtf8WithoutByteOrderMark)
{
    const CSVFileLoader loader(write("utf8.csv", "Straße;Ω\nGrün;日本\n"));
    EXPECT_EQ(QStringList{QString::fromUtf8("Grün")}, valuesOf(loader, "Straße"));
    EXPECT_EQ(QStringList{QString::fromUtf8("日本")}, valuesOf(loader, "Ω"));
}

TEST_F(CSVFileLoaderTest, StreamIsReadFromItsPosition)
{
    QString text = QStringLiteral("skipped;line\nA;B\n1;2\n");
    QTextStream stream(&text, QIODevice::ReadOnly);
    EXPECT_EQ(QStringLiteral("skipped;line"), stream.readLine());
    CSVFileLoader loader;
    loader.LoadFile(stream, QString());
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("skipped")));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(loader, "B"));
}

TEST_F(CSVFileLoaderTest, StreamNameServesTheMessageOnly)
{
    QString empty;
    QTextStream unnamed(&empty, QIODevice::ReadOnly);
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(unnamed, QString()); },
                                             QStringLiteral("Stream is empty!")));

    QString comments = QStringLiteral("# nothing but this\n");
    QTextStream named(&comments, QIODevice::ReadOnly);
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(named, QStringLiteral("memory.csv")); },
                                             QStringLiteral("memory.csv is empty!")));

    // A name that is no file does not matter when the stream has a text.
    QString text = QStringLiteral("A\n1\n");
    QTextStream stream(&text, QIODevice::ReadOnly);
    loader.LoadFile(stream, QStringLiteral("/no/such/file.csv"));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
}

TEST_F(CSVFileLoaderTest, CopiesAreIndependent)
{
    CSVFileLoader original(write("first.csv", "A;B\n1;2\n"));
    CSVFileLoader copy(original);
    copy.LoadFile(write("second.csv", "C\n3;4;5\n"));
    EXPECT_TRUE(hasColumns(original, 2));
    EXPECT_EQ(nullptr, original.GetColumn(QStringLiteral("C")));
    EXPECT_EQ(strings({"1"}), valuesOf(original, "A"));
    EXPECT_EQ(strings({"1", "3"}), valuesOf(copy, "A"));

    CSVFileLoader assigned;
    assigned = copy;
    copy.LoadFile(write("third.csv", "D\n6;7;8;9\n"));
    EXPECT_TRUE(hasColumns(assigned, 3));
    EXPECT_TRUE(hasColumns(copy, 4));
    EXPECT_EQ(strings({"5"}), valuesOf(assigned, "C"));
}

// --- the edge cases of the format -------------------------------------------------------------

TEST_F(CSVEdgeCases, FileOfOnlyCommentLinesIsEmpty)
{
    const QString path = write("comments.csv", "# first\n#second;with;semicolons\n#\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, emptyMessage(path)));
    EXPECT_TRUE(hasColumns(loader, 0));
}

TEST_F(CSVEdgeCases, EmptyFirstLineIsEmptyEvenIfDataFollows)
{
    const QString path = write("firstempty.csv", "\nA;B\n1;2\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, emptyMessage(path)));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("A")));
    EXPECT_TRUE(hasColumns(loader, 0));
}

TEST_F(CSVEdgeCases, EmptyLineAfterCommentsIsEmptyToo)
{
    const QString path = write("commentthenempty.csv", "# comment\n\nA;B\n1;2\n");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader loader(path); }, emptyMessage(path)));
}

TEST_F(CSVEdgeCases, RowWithTrailingSemicolonUnderTwoNamesIsCorrupt)
{
    const QString path = write("trailingrow.csv", "Type;Comment\nFFM;text;\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, corrupt));
    // The header stays, the refused row left nothing behind.
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_TRUE(valuesOf(loader, "Type").isEmpty());
    EXPECT_TRUE(valuesOf(loader, "Comment").isEmpty());
}

TEST_F(CSVEdgeCases, SameRowUnderHeaderWithTrailingSemicolonIsAccepted)
{
    const CSVFileLoader loader(write("trailingboth.csv", "Type;Comment;\nFFM;text;\nDF;more;\n"));
    EXPECT_TRUE(hasColumns(loader, 3));
    EXPECT_EQ(strings({"FFM", "DF"}), valuesOf(loader, "Type"));
    EXPECT_EQ(strings({"text", "more"}), valuesOf(loader, "Comment"));
    EXPECT_EQ(strings({"", ""}), valuesOf(loader, ""));
}

TEST_F(CSVEdgeCases, BlankLineBetweenRowsSilentlyEndsTheFile)
{
    // The row behind the blank line would be corrupt; it is never looked at.
    const CSVFileLoader loader(write("blank.csv", "A;B\n1;2\n3;4\n\n5;6\n7\n"));
    EXPECT_EQ(strings({"1", "3"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2", "4"}), valuesOf(loader, "B"));
}

TEST_F(CSVEdgeCases, HashLineAfterHeaderIsData)
{
    const QString path = write("hashrow.csv", "A;B\n1;2\n# a comment, or so it seems\n3;4\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, corrupt));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));

    const CSVFileLoader fitting(write("hashfits.csv", "A;B\n#x;y\n"));
    EXPECT_EQ(strings({"#x"}), valuesOf(fitting, "A"));
    EXPECT_EQ(strings({"y"}), valuesOf(fitting, "B"));
}

TEST_F(CSVEdgeCases, LfAndCrLfReadTheSame)
{
    const QByteArray lf = "# comment\nType;Comment;\nFFM;first;\nDF;;\n\nignored\n";
    QByteArray crlf = lf;
    crlf.replace("\n", "\r\n");
    const CSVFileLoader fromLf(write("lf.csv", lf));
    const CSVFileLoader fromCrLf(write("crlf.csv", crlf));
    for (const CSVFileLoader *loader : {&fromLf, &fromCrLf}) {
        EXPECT_TRUE(hasColumns(*loader, 3));
        EXPECT_EQ(strings({"FFM", "DF"}), valuesOf(*loader, "Type"));
        EXPECT_EQ(strings({"first", ""}), valuesOf(*loader, "Comment"));
        EXPECT_EQ(strings({"", ""}), valuesOf(*loader, ""));
    }
    EXPECT_EQ(nullptr, fromCrLf.GetColumn(QStringLiteral("\r")));
}

TEST_F(CSVEdgeCases, CommentLongerThanTheLimitSplitsIntoTwoLines)
{
    // 10240 characters of comment, then, on the same line, what becomes the
    // header.
    const QByteArray comment = "#" + QByteArray(10239, 'c');
    const CSVFileLoader loader(write("longcomment.csv", comment + "A;B\n1;2\n"));
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(loader, "B"));
}

TEST_F(CSVEdgeCases, HeaderLongerThanTheLimitSplitsIntoTwoLines)
{
    // The first 10240 characters are the header; the rest of the line is
    // the first row.
    const QString name(10240, QLatin1Char('N'));
    const CSVFileLoader loader(write("longheader.csv", name.toLatin1() + "tail\nrow\n"));
    EXPECT_TRUE(hasColumns(loader, 1));
    EXPECT_EQ(strings({"tail", "row"}), valuesOf(loader, name));
}

// --- damaged and unusual files ----------------------------------------------------------------

TEST_F(CSVBadInput, MissingFileCannotBeOpened)
{
    const QString path = m_dir.filePath(QStringLiteral("missing.csv"));
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, openMessage(path)));
    EXPECT_TRUE(hasColumns(loader, 0));
    EXPECT_TRUE(loader.GetErrorText().isEmpty());
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader constructed(path); }, openMessage(path)));
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(QString()); }, openMessage(QString())));
}

TEST_F(CSVBadInput, DirectoryCannotBeOpened)
{
    const QString path = m_dir.path();
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader loader(path); }, openMessage(path)));
}

TEST_F(CSVBadInput, EmptyFileIsEmpty)
{
    const QString path = write("empty.csv", QByteArray());
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader loader(path); }, emptyMessage(path)));
}

TEST_F(CSVBadInput, OnlyCommentsWithoutFinalLineEndIsEmpty)
{
    const QString path = write("comments.csv", "#a\r\n#b");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader loader(path); }, emptyMessage(path)));
}

TEST_F(CSVBadInput, OnlyByteOrderMarkIsEmpty)
{
    const QString path = write("bom.csv", "\xEF\xBB\xBF");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader loader(path); }, emptyMessage(path)));
}

TEST_F(CSVBadInput, SemicolonInsideCommentLineIsIgnored)
{
    const CSVFileLoader loader(write("comment.csv", "# Type;Comment;Frequency;\n#;;;\nA;B\n1;2\n"));
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("# Type")));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
}

TEST_F(CSVBadInput, RowWithTooManyFieldsStopsAndKeepsRowsBefore)
{
    const QString path = write("toomany.csv", "A;B\n1;2\n3;4\n5;6;7\n8;9\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, corrupt));
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_EQ(strings({"1", "3"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2", "4"}), valuesOf(loader, "B"));
}

TEST_F(CSVBadInput, RowWithTooFewFieldsStopsAndKeepsRowsBefore)
{
    const QString path = write("toofew.csv", "A;B;C\n1;2;3\n4;5\n6;7;8\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, corrupt));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(loader, "B"));
    EXPECT_EQ(strings({"3"}), valuesOf(loader, "C"));
}

TEST_F(CSVBadInput, BinaryBytesWithNulsAndMalformedUtf8)
{
    // NULs stay in their cells; malformed UTF-8 reads as U+FFFD.
    const QByteArray bytes("A\0B;C\n\0;\xFF\n\x01\x02;\xC3\n", 15);
    const CSVFileLoader loader(write("binary.bin", bytes));
    const QString nul(QChar(0));
    const QString replacement(QChar(QChar::ReplacementCharacter));
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("A")));
    EXPECT_EQ((QStringList{nul, QStringLiteral("\x01\x02")}),
              valuesOf(loader, QStringLiteral("A") + nul + QStringLiteral("B")));
    EXPECT_EQ((QStringList{replacement, replacement}), valuesOf(loader, "C"));
}

TEST_F(CSVBadInput, RandomBytesReadAsTheFormatSays)
{
    // Short files of the bytes that matter to the format and a few others,
    // NUL among them; each must give exactly what the model of the format
    // gives, or its failure, and nothing else may escape.
    const char alphabet[] = {';', ';', '\n', '\n', '\r', '#', '\0', 'a', 'B', ' ', '"', '\t'};
    std::mt19937 random(20240611);
    for (int round = 0; round < 400; ++round) {
        QByteArray bytes;
        const int length = int(random() % 80);
        for (int i = 0; i < length; ++i)
            bytes.append(alphabet[random() % sizeof(alphabet)]);
        const QString path = write("random.csv", bytes);
        const Expected expected = model(bytes, path);
        CSVFileLoader loader;
        QString message;
        try {
            loader.LoadFile(path);
        } catch (const OrbelinException &e) {
            message = e.GetMessage();
        } catch (const std::exception &e) {
            ADD_FAILURE() << "std::exception escaped: " << e.what();
        }
        SCOPED_TRACE(bytes.toHex().toStdString());
        EXPECT_EQ(expected.message, message);
        EXPECT_TRUE(matches(loader, expected));
    }
}

TEST_F(CSVBadInput, LineOf10241CharactersComesInTwoPieces)
{
    // The row is 10241 characters: its first 10240 make a row of two cells,
    // the last one a row of one cell, which does not fit the header.
    const QByteArray row = QByteArray(10239, 'x') + ";y";
    ASSERT_EQ(10241, row.size());
    const QString path = write("longrow.csv", "A;B\n" + row + "\n1;2\n");
    CSVFileLoader loader;
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, corrupt));
    EXPECT_EQ(QStringList{QString(10239, QLatin1Char('x'))}, valuesOf(loader, "A"));
    EXPECT_EQ(QStringList{QString()}, valuesOf(loader, "B"));

    // The same piece under a one-column header is a row of its own.
    const CSVFileLoader single(write("longsingle.csv", "A\n" + QByteArray(10241, 'z') + "\n"));
    EXPECT_EQ((QStringList{QString(10240, QLatin1Char('z')), QStringLiteral("z")}), valuesOf(single, "A"));
}

TEST_F(CSVBadInput, LineOfExactly10240CharactersEndsTheData)
{
    // Behind the 10240 characters readLine finds the line feed alone: an
    // empty line, which ends the data.
    const CSVFileLoader loader(write("exact.csv", "A\n" + QByteArray(10240, 'e') + "\nlost\n"));
    EXPECT_EQ(QStringList{QString(10240, QLatin1Char('e'))}, valuesOf(loader, "A"));

    // Ahead of the header it leaves the file empty.
    const QString path = write("exactcomment.csv", "#" + QByteArray(10239, 'c') + "\nA\n1\n");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { CSVFileLoader commented(path); }, emptyMessage(path)));
}

TEST_F(CSVBadInput, CarriageReturnsAreRemovedEverywhere)
{
    // Text mode drops every CR as it reads, a lone one inside a cell too.
    const CSVFileLoader loader(write("cr.csv", "A\r;B\r\r\n1\r2;3\r\n"));
    EXPECT_EQ(strings({"12"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"3"}), valuesOf(loader, "B"));
}

TEST_F(CSVBadInput, Utf8ByteOrderMarkIsNotPartOfTheHeader)
{
    const CSVFileLoader loader(write("utf8bom.csv", "\xEF\xBB\xBFName;Wert\nGrün;Öl\n"));
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_EQ(QStringList{QString::fromUtf8("Grün")}, valuesOf(loader, "Name"));
    EXPECT_EQ(QStringList{QString::fromUtf8("Öl")}, valuesOf(loader, "Wert"));

    // The comment behind the mark is still a comment.
    const CSVFileLoader commented(write("utf8bomcomment.csv", "\xEF\xBB\xBF# comment;x\nA\n1\n"));
    EXPECT_TRUE(hasColumns(commented, 1));
    EXPECT_EQ(strings({"1"}), valuesOf(commented, "A"));
}

TEST_F(CSVBadInput, Utf16ByteOrderMarkOverridesUtf8)
{
    const QString text = QString::fromUtf8("# Kommentar;\r\nName;Wert;\r\nGrün;Öl;\r\n日本;;\r\n");
    for (const bool bigEndian : {false, true}) {
        SCOPED_TRACE(bigEndian ? "big endian" : "little endian");
        const CSVFileLoader loader(write(bigEndian ? "utf16be.csv" : "utf16le.csv", utf16WithBom(text, bigEndian)));
        EXPECT_TRUE(hasColumns(loader, 3));
        EXPECT_EQ((QStringList{QString::fromUtf8("Grün"), QString::fromUtf8("日本")}), valuesOf(loader, "Name"));
        EXPECT_EQ((QStringList{QString::fromUtf8("Öl"), QString()}), valuesOf(loader, "Wert"));
        EXPECT_EQ(strings({"", ""}), valuesOf(loader, ""));
    }
}

TEST_F(CSVBadInput, SecondLoadFileAppends)
{
    CSVFileLoader loader(write("first.csv", "A;B\n1;2\n"));
    loader.LoadFile(write("second.csv", "# more\nC\n3;4;5\n6;7;8\n"));
    EXPECT_TRUE(hasColumns(loader, 3));
    EXPECT_EQ(strings({"1", "3", "6"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2", "4", "7"}), valuesOf(loader, "B"));
    EXPECT_EQ(strings({"5", "8"}), valuesOf(loader, "C"));
}

TEST_F(CSVBadInput, AppendedRowsMustMatchAllColumns)
{
    // The second file is well-formed on its own, but its rows have to fill
    // the columns of the first file too.
    CSVFileLoader loader(write("first.csv", "A;B\n1;2\n"));
    const QString second = write("second.csv", "C;D\n3;4\n");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(second); }, corrupt));
    EXPECT_TRUE(hasColumns(loader, 4));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_TRUE(valuesOf(loader, "C").isEmpty());

    // The same file again: its header repeats the names, and the first of
    // each name is the one found.
    CSVFileLoader twice(write("twice.csv", "A;B\n"));
    twice.LoadFile(write("twice2.csv", "A;B\n1;2;3;4\n"));
    EXPECT_TRUE(hasColumns(twice, 4));
    EXPECT_EQ(strings({"1"}), valuesOf(twice, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(twice, "B"));
}

TEST_F(CSVBadInput, FailedSecondLoadKeepsTheFirst)
{
    CSVFileLoader loader(write("first.csv", "A;B\n1;2\n"));
    const QString missing = m_dir.filePath(QStringLiteral("missing.csv"));
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(missing); }, openMessage(missing)));
    const QString empty = write("empty.csv", "#\n");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(empty); }, emptyMessage(empty)));
    EXPECT_TRUE(hasColumns(loader, 2));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(loader, "B"));
}

TEST_F(CSVBadInput, GetColumnFindsTheFirstExactMatch)
{
    const CSVFileLoader loader(write("names.csv", "A;a;A;A ;\n1;2;3;4;5\n"));
    EXPECT_TRUE(hasColumns(loader, 5));
    EXPECT_EQ(strings({"1"}), valuesOf(loader, "A"));
    EXPECT_EQ(strings({"2"}), valuesOf(loader, "a"));
    EXPECT_EQ(strings({"4"}), valuesOf(loader, "A "));
    EXPECT_EQ(strings({"5"}), valuesOf(loader, ""));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral(" A")));
    EXPECT_EQ(nullptr, loader.GetColumn(QStringLiteral("b")));
    EXPECT_EQ(loader.GetColumn(QStringLiteral("A")), loader.GetColumn(QStringLiteral("A")));
}

TEST_F(CSVBadInput, CheckHeaderNeedsEveryPart)
{
    CSVFileLoader loader(write("header.csv", "Type;Comment;Frequency\n"));
    EXPECT_TRUE(loader.CheckHeader(QStringLiteral("Type")));
    EXPECT_TRUE(loader.CheckHeader(QStringLiteral("Frequency;Type;Comment")));
    EXPECT_TRUE(loader.CheckHeader(QStringLiteral("Type;Type")));
    EXPECT_FALSE(loader.CheckHeader(QStringLiteral("Type;Level")));
    EXPECT_FALSE(loader.CheckHeader(QStringLiteral("type")));
    EXPECT_FALSE(loader.CheckHeader(QStringLiteral("Type ")));
    // A trailing ";" asks for a column with an empty name.
    EXPECT_FALSE(loader.CheckHeader(QStringLiteral("Type;")));
    EXPECT_FALSE(loader.CheckHeader(QString()));
    EXPECT_FALSE(loader.CheckHeader(QStringLiteral("")));

    CSVFileLoader empty;
    EXPECT_FALSE(empty.CheckHeader(QString()));
    EXPECT_FALSE(empty.CheckHeader(QStringLiteral("Type")));
}

TEST_F(CSVBadInput, CheckHeaderWithEmptyArgumentFindsTheEmptyName)
{
    CSVFileLoader loader(write("trailing.csv", "Type;Comment;\n"));
    EXPECT_TRUE(loader.CheckHeader(QString()));
    EXPECT_TRUE(loader.CheckHeader(QStringLiteral("")));
    EXPECT_TRUE(loader.CheckHeader(QStringLiteral("Type;")));
    EXPECT_TRUE(loader.CheckHeader(QStringLiteral(";Comment;;Type")));
    EXPECT_FALSE(loader.CheckHeader(QStringLiteral(";Frequency")));
}

TEST_F(CSVBadInput, ValuesPointerStaysStable)
{
    CSVFileLoader loader(write("stable.csv", "A;B\n1;2\n3;4\n"));
    const CSVColumn *column = loader.GetColumn(QStringLiteral("A"));
    ASSERT_NE(nullptr, column);
    const QStringList *values = column->GetValues();
    EXPECT_EQ(column, loader.GetColumn(QStringLiteral("A")));
    EXPECT_EQ(values, loader.GetColumn(QStringLiteral("A"))->GetValues());
    EXPECT_NE(values, loader.GetColumn(QStringLiteral("B"))->GetValues());

    // Copies of the loader, and what is done to them, do not move the
    // original's columns.
    {
        CSVFileLoader copy(loader);
        EXPECT_EQ(column, loader.GetColumn(QStringLiteral("A")));
        copy.LoadFile(write("more.csv", "C\n5;6;7\n"));
        EXPECT_EQ(strings({"1", "3", "5"}), valuesOf(copy, "A"));
        CSVFileLoader assigned;
        assigned = loader;
        EXPECT_TRUE(assigned.CheckHeader(QStringLiteral("A;B")));
    }
    EXPECT_EQ(column, loader.GetColumn(QStringLiteral("A")));
    EXPECT_EQ(values, column->GetValues());
    EXPECT_EQ(strings({"1", "3"}), *values);
}

// A loaded column reads its cells from the text of the load; its strings are
// made when GetValues first asks, and the copies of the column share them.
TEST_F(CSVFileLoaderTest, CopiesOfALoadedColumnShareItsValues)
{
    const CSVFileLoader loader(write("shared.csv", "A;B\n1;2\n;\n"));
    const CSVFileLoader copy(loader);
    const CSVColumn column(*loader.GetColumn(QStringLiteral("B")));
    EXPECT_EQ(strings({"2", ""}), *column.GetValues());
    EXPECT_EQ(strings({"1", ""}), valuesOf(copy, "A"));
    EXPECT_EQ(column.GetValues(), loader.GetColumn(QStringLiteral("B"))->GetValues());
    EXPECT_EQ(copy.GetColumn(QStringLiteral("A"))->GetValues(), loader.GetColumn(QStringLiteral("A"))->GetValues());
}

TEST_F(CSVFileLoaderTest, ChangingALoadedColumnLeavesItsCopiesAlone)
{
    const CSVFileLoader loader(write("changed.csv", "A;B\n1;2\n3;4\n"));
    const CSVColumn *loaded = loader.GetColumn(QStringLiteral("A"));
    ASSERT_NE(nullptr, loaded);
    const QStringList *values = loaded->GetValues();

    CSVColumn changed(*loaded);
    changed.AddValue(QStringLiteral("5"));
    changed.SetName(QStringLiteral("C"));
    EXPECT_EQ(strings({"1", "3", "5"}), *changed.GetValues());
    EXPECT_EQ(QStringLiteral("C"), changed.GetName());

    // Changed before anyone asked for the strings: the copy takes the cells
    // over all the same.
    CSVColumn early(*loader.GetColumn(QStringLiteral("B")));
    early.AddValue(QString());
    EXPECT_EQ(strings({"2", "4", ""}), *early.GetValues());

    EXPECT_EQ(QStringLiteral("A"), loaded->GetName());
    EXPECT_EQ(values, loaded->GetValues());
    EXPECT_EQ(strings({"1", "3"}), *values);
    EXPECT_EQ(strings({"2", "4"}), valuesOf(loader, "B"));
}

TEST_F(CSVFileLoaderTest, StringsOfALoadedColumnAreMadeOnceForAllThreads)
{
    QByteArray text = "A;B\n";
    QStringList expected;
    for (int row = 0; row < 2000; ++row) {
        text += QByteArray::number(row) + ";" + QByteArray::number(-row) + "\n";
        expected << QString::number(-row);
    }
    const CSVFileLoader loader(write("threads.csv", text));
    std::vector<CSVFileLoader> copies(8, loader);
    std::vector<const QStringList *> seen(copies.size(), nullptr);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < copies.size(); ++i) {
        threads.emplace_back([&copies, &seen, i] {
            const CSVColumn *column = copies[i].GetColumn(QStringLiteral("B"));
            seen[i] = column ? column->GetValues() : nullptr;
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    const QStringList *values = loader.GetColumn(QStringLiteral("B"))->GetValues();
    for (const QStringList *list : seen)
        EXPECT_EQ(values, list);
    EXPECT_EQ(expected, *values);
}

TEST_F(CSVBadInput, ErrorTextStaysEmpty)
{
    CSVFileLoader loader;
    const QString path = write("bad.csv", "A\n1;2\n");
    EXPECT_TRUE(throwsWith<OrbelinException>([&] { loader.LoadFile(path); }, corrupt));
    EXPECT_TRUE(loader.GetErrorText().isEmpty());
    // The next file appends to the column kept from the failed one.
    loader.LoadFile(write("good.csv", "B\n3;4\n"));
    EXPECT_EQ(strings({"3"}), valuesOf(loader, "A"));
    EXPECT_TRUE(loader.GetErrorText().isEmpty());
}
