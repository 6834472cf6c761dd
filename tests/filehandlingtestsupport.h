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

using Morvane::FileHandling;
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
