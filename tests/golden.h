#ifndef MORVANE_TESTS_GOLDEN_H
#define MORVANE_TESTS_GOLDEN_H

// Golden files: a record's XML document and binary representation as they
// were written once, under tests/data. Both Qt builds must write these very
// bytes and read them back into the record they came from. To write the files
// anew after a deliberate change of the form, run the tests with
// MORVANE_WRITE_GOLDEN=1 set.

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

namespace MorvaneTest {

// Compares `record` with tests/data/<name>.xml and <name>.bin, or writes
// them when MORVANE_WRITE_GOLDEN is set.
template <class R>
void expectGolden(const R &record, const QString &name)
{
    const QByteArray binary = record.GetBinaryRepresentationAsQByteArray();
    const QByteArray xml = record.GetXmlString().toUtf8();
    const QString base = QStringLiteral(MORVANE_TEST_DATA "/") + name;
    QFile binaryFile(base + QStringLiteral(".bin"));
    QFile xmlFile(base + QStringLiteral(".xml"));
    if (qEnvironmentVariableIsSet("MORVANE_WRITE_GOLDEN")) {
        ASSERT_TRUE(binaryFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) << base.toStdString();
        ASSERT_TRUE(xmlFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) << base.toStdString();
        binaryFile.write(binary);
        xmlFile.write(xml);
        return;
    }
    ASSERT_TRUE(binaryFile.open(QIODevice::ReadOnly)) << base.toStdString();
    ASSERT_TRUE(xmlFile.open(QIODevice::ReadOnly)) << base.toStdString();
    QByteArray goldenBinary = binaryFile.readAll();
    const QByteArray goldenXml = xmlFile.readAll();
    EXPECT_EQ(goldenBinary, binary) << base.toStdString();
    EXPECT_EQ(goldenXml, xml) << base.toStdString();
    R fromBinary;
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(goldenBinary)) << base.toStdString();
    EXPECT_TRUE(fromBinary == record) << base.toStdString();
    R fromXml;
    ASSERT_TRUE(fromXml.SetXmlString(QString::fromUtf8(goldenXml), true)) << base.toStdString();
    EXPECT_TRUE(fromXml == record) << base.toStdString();
}

} // namespace MorvaneTest

#endif
