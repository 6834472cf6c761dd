#ifndef MORVANE_TESTS_FILEHANDLINGTESTSUPPORT_H
#define MORVANE_TESTS_FILEHANDLINGTESTSUPPORT_H

// What the tests of the list files share: the list types by name, the texts
// the file handling traces, and a fixture with a temporary folder for real
// files and a trace sink that keeps every line traced.

#include "testsupport.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <vector>

namespace MorvaneTest {

using Morvane::FFM_Settings;
using Morvane::FileHandling;
using Morvane::FrequencyStoreEntry;
using Morvane::FrequencyStoreList;
using Morvane::FrequencyStoreListHelper;
using ListType = Morvane::FrequencyStoreListHelper::ListType;

inline const ListType NotePad = FrequencyStoreListHelper::ListType_NotePad;
inline const ListType Suppress = FrequencyStoreListHelper::ListType_Suppress;
inline const ListType TargetList = FrequencyStoreListHelper::ListType_TargetList;
inline const ListType DataResults = FrequencyStoreListHelper::ListType_DataResults;
inline const ListType NOIFrequencies = FrequencyStoreListHelper::ListType_NOIFrequencies;
inline const ListType DetectionConventional = FrequencyStoreListHelper::ListType_DetectionConventional;
inline const ListType MemoryScan = FrequencyStoreListHelper::ListType_MemoryScan;
inline const ListType DetectionResult = FrequencyStoreListHelper::ListType_DetectionResult;
inline const ListType TransducerList = FrequencyStoreListHelper::ListType_TransducerList;

inline const QString notePadHeader = QStringLiteral("Type;Comment;Frequency;IFBandwidth;AnalogDemod;\n");
inline const QString suppressHeader = QStringLiteral("Type;Comment;Frequency;IFBandwidth\n");
inline const QString corrupt = QStringLiteral("Data is corrupt!. It can't be assigned to the header!");
inline const QString importError = QStringLiteral("Import: Cannot export frequency store to file as error ");
inline const QString exportError = QStringLiteral("ExportCSV: Cannot export frequency store to file as error ");
inline const QString xmlError = QStringLiteral("ExportXml:: Cannot export frequency store to file as error ");
inline const QString invalidType = QStringLiteral("ExportCSV: Cannot export frequency store to file as ListType is invalid!!");
inline const QString transducer = QStringLiteral("find application that actually needs transducer settings?");

inline const QString missingType = QStringLiteral("Data is corrupted. The column 'Type' is missing!");
inline const QString emptyType = QStringLiteral("Data is corrupted. 'Type' is not allowed to be empty!");

inline FrequencyStoreEntry entry(const QString &type, const QString &comment, double frequency, double bandwidth,
                          int analogDemod = -1)
{
    FrequencyStoreEntry e;
    e.SetType(type);
    if (!comment.isNull())
        e.SetComment(comment);
    FFM_Settings &settings = e.GetFFM_Settings();
    settings.GetFrequency().SetValue(frequency);
    settings.GetIFBandwidth().SetValue(bandwidth);
    if (analogDemod >= 0)
        settings.SetAnalogDemod(FFM_Settings::AnalogDemod(analogDemod));
    return e;
}

// A list that already holds one entry, as a caller's list may.
inline FrequencyStoreList holdingOne()
{
    FrequencyStoreList list;
    list.SetName(QStringLiteral("kept"));
    list.AppendFrequencyStoreEntry(entry(QStringLiteral("Old"), QStringLiteral("before"), 1.0, 2.0));
    return list;
}

inline const QVector<FrequencyStoreEntry> &entries(const FrequencyStoreList &list)
{
    return list.GetFrequencyStoreEntry();
}

// An import refused as a whole: false, the list as it was, and one trace
// line that starts with the import's words (and ends with message, unless it
// is the null string).
inline ::testing::AssertionResult refused(bool result, const FrequencyStoreList &before,
                                   const FrequencyStoreList &after, const QStringList &texts, const QString &message)
{
    if (result)
        return ::testing::AssertionFailure() << "the import succeeded";
    if (before != after)
        return ::testing::AssertionFailure() << "the list was changed";
    if (texts.size() != 1 || !texts[0].startsWith(importError))
        return ::testing::AssertionFailure() << "traced " << texts.join(QLatin1Char('|')).toStdString();
    if (!message.isNull() && texts[0] != importError + message)
        return ::testing::AssertionFailure() << "traced " << texts[0].toStdString();
    return ::testing::AssertionSuccess();
}

struct TraceLine
{
    QString file;
    QString text;
    unsigned short line;
};

class FileHandlingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        savedMask = ErrorHandler::Instance()->GetTraceMask();
        ErrorHandler::Instance()->SetTraceMask(ErrorHandler::TraceErrors);
        ErrorHandler::Instance()->SetTraceSink([this](const QString &file, const QString &text, unsigned short line) {
            lines.push_back({file, text, line});
        });
    }

    void TearDown() override
    {
        ErrorHandler::Instance()->SetTraceSink(ErrorHandler::TraceSink());
        ErrorHandler::Instance()->SetTraceMask(savedMask);
    }

    QString path(const char *name) const { return dir.filePath(QString::fromUtf8(name)); }

    QString write(const char *name, const QByteArray &bytes) const
    {
        const QString fileName = path(name);
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        EXPECT_EQ(bytes.size(), file.write(bytes));
        return fileName;
    }

    QString write(const char *name, const char *text) const { return write(name, QByteArray(text)); }

    static QByteArray read(const QString &fileName)
    {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            ADD_FAILURE() << "cannot read " << fileName.toStdString();
            return QByteArray();
        }
        return file.readAll();
    }

    QStringList texts() const
    {
        QStringList out;
        for (const TraceLine &line : lines)
            out.append(line.text);
        return out;
    }

    // The names in the folder: what a write left behind.
    QStringList folder() const { return QDir(dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot); }

    // Imports text as a file of this type into the list; the result.
    bool import(const QByteArray &text, FrequencyStoreList &list, ListType type = NotePad)
    {
        return FileHandling().ImportCSV(write("in.csv", text), list, type);
    }

    QTemporaryDir dir;
    std::vector<TraceLine> lines;
    unsigned savedMask = 0;
};

} // namespace MorvaneTest

#endif
