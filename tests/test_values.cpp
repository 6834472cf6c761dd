// The value records Frequency, Bandwidth, Baudrate, Shift, IFBandwidth and
// SignalLength.

#include "testsupport.h"

#include <QtCore/QTemporaryDir>

using namespace Morvane;
using ORBELIN::OutOfRangeException;
using testsupport::hex;
using testsupport::throwsWith;
using testsupport::XmlReader;
using testsupport::xmlOf;

// --- the whole family, one sample each ------------------------------------------------

template <class R>
struct ValueTraits;

#define MORVANE_VALUE_TRAITS(Type, sampleCall, file, idValue)                  \
    template <>                                                                \
    struct ValueTraits<Type>                                                   \
    {                                                                          \
        static Type sample() { return samples::sampleCall(); }                 \
        static const char *stem() { return file; }                             \
        static qint64 id() { return qint64(Q_UINT64_C(idValue)); }             \
    };

MORVANE_VALUE_TRAITS(Frequency, frequency, "frequency", 0x3eea1db5)
MORVANE_VALUE_TRAITS(Bandwidth, bandwidth, "bandwidth", 0xffffffffd6c3cd69)
MORVANE_VALUE_TRAITS(Baudrate, baudrate, "baudrate", 0x1f7b9fad)
MORVANE_VALUE_TRAITS(Shift, shift, "shift", 0x6b7ef64e)
MORVANE_VALUE_TRAITS(IFBandwidth, ifBandwidth, "ifbandwidth", 0xffffffffb7f0c2e1)
MORVANE_VALUE_TRAITS(SignalLength, signalLength, "signallength", 0x16c094b1)

#undef MORVANE_VALUE_TRAITS

template <class R>
class ValueRecord : public ::testing::Test
{
protected:
    static R sample() { return ValueTraits<R>::sample(); }
    static QByteArray golden(const char *extension)
    {
        const QByteArray name = QByteArray(ValueTraits<R>::stem()) + extension;
        return testsupport::dataFile(name.constData());
    }
};

using ValueTypes = ::testing::Types<Frequency, Bandwidth, Baudrate, Shift, IFBandwidth, SignalLength>;
TYPED_TEST_SUITE(ValueRecord, ValueTypes);

TYPED_TEST(ValueRecord, IdAndName)
{
    EXPECT_EQ(ValueTraits<TypeParam>::id(), TypeParam::GetId());
    EXPECT_EQ(QString::fromLatin1(ValueTraits<TypeParam>::stem()), TypeParam().GetObjectName().toLower());
}

TYPED_TEST(ValueRecord, XmlRoundTrip)
{
    const TypeParam original = this->sample();
    TypeParam back;
    ASSERT_TRUE(back.SetXmlString(original.GetXmlString()));
    EXPECT_TRUE(back == original);
    EXPECT_EQ(original.GetXmlString(), back.GetXmlString());
}

TYPED_TEST(ValueRecord, BinaryRoundTrip)
{
    const TypeParam original = this->sample();
    QByteArray bytes = original.GetBinaryRepresentationAsQByteArray();
    TypeParam back;
    ASSERT_TRUE(back.SetBinaryRepresentation(bytes));
    EXPECT_TRUE(back == original);
    EXPECT_EQ(bytes, back.GetBinaryRepresentationAsQByteArray());
}

TYPED_TEST(ValueRecord, GoldenBinary)
{
    QByteArray golden = this->golden(".bin");
    EXPECT_EQ(golden, this->sample().GetBinaryRepresentationAsQByteArray());
    TypeParam back;
    ASSERT_TRUE(back.SetBinaryRepresentation(golden));
    EXPECT_EQ(this->sample(), back);
}

TYPED_TEST(ValueRecord, GoldenXml)
{
    const QString golden = QString::fromUtf8(this->golden(".xml"));
    EXPECT_EQ(golden, this->sample().GetXmlString());
    TypeParam back;
    ASSERT_TRUE(back.SetXmlString(golden));
    EXPECT_EQ(this->sample(), back);
}

TYPED_TEST(ValueRecord, FileRoundTrips)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const TypeParam original = this->sample();

    const QString xmlPath = dir.filePath(QStringLiteral("value.xml"));
    ASSERT_TRUE(original.SaveXml(xmlPath));
    TypeParam fromXml;
    ASSERT_TRUE(fromXml.LoadXml(xmlPath));
    EXPECT_EQ(original, fromXml);

    const QString binPath = dir.filePath(QStringLiteral("value.bin"));
    {
        QFile out(binPath);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(original.GetBinaryRepresentationAsQByteArray());
    }
    QFile in(binPath);
    TypeParam fromBinary;
    ASSERT_TRUE(fromBinary.LoadBinary(&in));
    EXPECT_EQ(original, fromBinary);
}

TYPED_TEST(ValueRecord, CopyOnWrite)
{
    TypeParam a = this->sample();
    TypeParam b(a);
    b.SetMin(-1.0);
    EXPECT_EQ(this->sample(), a);
    EXPECT_NE(a, b);
    TypeParam c;
    c = a;
    a.SetMax(-2.0);
    EXPECT_EQ(this->sample(), c);
}

TYPED_TEST(ValueRecord, SpanIsNotTested)
{
    TypeParam r;
    ASSERT_TRUE(r.GetValidate());
    r.SetMin(100.0);
    r.SetMax(-100.0);
    EXPECT_EQ(100.0, r.GetMin());
    EXPECT_EQ(-100.0, r.GetMax());
    EXPECT_TRUE(r.IsValidMin(-1e300));
    EXPECT_TRUE(r.IsValidMax(1e300));
}

// --- the five text-value records --------------------------------------------------------

template <class R>
class TextValueRecord : public ::testing::Test
{
};

using TextValueTypes = ::testing::Types<Frequency, Bandwidth, Baudrate, Shift, IFBandwidth>;
TYPED_TEST_SUITE(TextValueRecord, TextValueTypes);

TYPED_TEST(TextValueRecord, CheckNamesValue)
{
    TypeParam r;
    r.SetMin(1.0);
    r.SetMax(2.0);
    const QString message = r.GetObjectName() + QStringLiteral(": Please set Value properly.");
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { r.Check(); }, message));
    r.SetValue(-5.0);
    EXPECT_NO_THROW(r.Check());
    EXPECT_TRUE(r.IsValidValue(-1e12));
}

TYPED_TEST(TextValueRecord, OnlyValueSetWritesNoAttributes)
{
    TypeParam r;
    r.SetValue(7.0);
    EXPECT_EQ(QStringLiteral("<%1>7.00</%1>").arg(r.GetObjectName()), xmlOf(r));
}

TYPED_TEST(TextValueRecord, AttributesAreWrittenMinMaxThenText)
{
    TypeParam r;
    r.SetMax(3.0);
    r.SetValue(2.0);
    r.SetMin(1.0);
    EXPECT_EQ(QStringLiteral("<%1 Min=\"1.00\" Max=\"3.00\">2.00</%1>").arg(r.GetObjectName()), xmlOf(r));
}

TYPED_TEST(TextValueRecord, EmptyElementGivesASetZeroValue)
{
    TypeParam r;
    r.SetValue(9.0);
    XmlReader xml(QStringLiteral("<%1/>").arg(r.GetObjectName()));
    r.ProcessXml(xml.reader);
    EXPECT_TRUE(r.IsValueSet());
    EXPECT_EQ(0.0, r.GetValue());
}

TYPED_TEST(TextValueRecord, UnknownAttributesAndChildrenRaiseNoError)
{
    TypeParam r;
    const QString name = r.GetObjectName();
    ASSERT_TRUE(r.SetXmlString(QStringLiteral("<%1 Min=\"1\" Foo=\"bar\" Max=\"2\">3.5</%1>").arg(name)));
    EXPECT_EQ(1.0, r.GetMin());
    EXPECT_EQ(2.0, r.GetMax());
    EXPECT_EQ(3.5, r.GetValue());

    TypeParam withChild;
    XmlReader xml(QStringLiteral("<Root><%1 Min=\"4\"><Unknown>x</Unknown></%1><After/></Root>").arg(name));
    xml.reader.readNextStartElement();
    EXPECT_NO_THROW(withChild.ProcessXml(xml.reader));
    EXPECT_EQ(4.0, withChild.GetMin());
    EXPECT_TRUE(withChild.IsValueSet());
    EXPECT_TRUE(xml.reader.isEndElement());
    EXPECT_EQ(name, xml.reader.name().toString());
    ASSERT_TRUE(xml.reader.readNextStartElement());
    EXPECT_EQ(QStringLiteral("After"), xml.reader.name().toString());
}

TYPED_TEST(TextValueRecord, BinaryOrderIsMinMaxValue)
{
    TypeParam r;
    r.SetValue(2.0);
    r.SetMin(1.0);
    r.SetMax(3.0);
    testsupport::BinaryWriter writer;
    ASSERT_TRUE(r.GetBinary(writer.stream, 0x01020304, true));
    EXPECT_EQ(hex("01020304" "00000030"
                  "3f282542" "00000008" "00000004" "312e3030"
                  "dfaeca08" "00000008" "00000004" "332e3030"
                  "817e129f" "00000008" "00000004" "322e3030"),
              writer.bytes);
}

TYPED_TEST(TextValueRecord, AttributesAreStoredPastTheSetter)
{
    TypeParam r;
    XmlReader xml(QStringLiteral("<%1 Min=\"abc\" Max=\"\">def</%1>").arg(r.GetObjectName()));
    r.ProcessXml(xml.reader);
    EXPECT_TRUE(r.IsMinSet());
    EXPECT_EQ(0.0, r.GetMin());
    EXPECT_TRUE(r.IsMaxSet());
    EXPECT_EQ(0.0, r.GetMax());
    EXPECT_TRUE(r.IsValueSet());
    EXPECT_EQ(0.0, r.GetValue());
}

// --- the four with Use ---------------------------------------------------------------------

template <class R>
class UseValueRecord : public ::testing::Test
{
};

using UseValueTypes = ::testing::Types<Frequency, Bandwidth, Baudrate, Shift>;
TYPED_TEST_SUITE(UseValueRecord, UseValueTypes);

TYPED_TEST(UseValueRecord, OnlyValueSetLeavesUseUnsetButTrue)
{
    TypeParam r;
    r.SetValue(145.5);
    EXPECT_EQ(QStringLiteral("<%1>145.50</%1>").arg(r.GetObjectName()), xmlOf(r));
    EXPECT_FALSE(r.IsUseSet());
    EXPECT_FALSE(r.IsMinSet());
    EXPECT_FALSE(r.IsMaxSet());
    EXPECT_TRUE(r.GetUse());
    EXPECT_TRUE(r.GetDefaultUse());
    // Nor in binary: the body is the value alone.
    EXPECT_EQ(hex("00000012" "817e129f" "0000000a" "00000006" "3134352e3530"),
              testsupport::binaryOf(r, 0, false));
}

TYPED_TEST(UseValueRecord, UseIsReadCaseInsensitively)
{
    const QString name = TypeParam().GetObjectName();
    const struct
    {
        const char *text;
        bool expected;
    } cases[] = {{"FALSE", false}, {"False", false}, {"false", false}, {"0", false}, {"no", true},
                 {"true", true},   {"1", true},      {"TRUE", true},   {"off", true}};
    for (const auto &c : cases) {
        TypeParam r;
        r.SetUse(!c.expected);
        ASSERT_TRUE(r.SetXmlString(QStringLiteral("<%1 Use=\"%2\">1</%1>").arg(name, QLatin1String(c.text))));
        EXPECT_TRUE(r.IsUseSet()) << c.text;
        EXPECT_EQ(c.expected, r.GetUse()) << c.text;
    }
}

TYPED_TEST(UseValueRecord, EmptyUseTakesTheDefault)
{
    const QString name = TypeParam().GetObjectName();
    TypeParam r;
    r.SetUse(false);
    ASSERT_TRUE(r.SetXmlString(QStringLiteral("<%1 Use=\"\">1</%1>").arg(name)));
    EXPECT_TRUE(r.IsUseSet());
    EXPECT_TRUE(r.GetUse());

    TypeParam changedDefault;
    changedDefault.SetDefaultUse(false);
    changedDefault.SetUse(true);
    ASSERT_TRUE(changedDefault.SetXmlString(QStringLiteral("<%1 Use=\"\">1</%1>").arg(name)));
    EXPECT_FALSE(changedDefault.GetUse());
}

TYPED_TEST(UseValueRecord, ResetToDefaultSetsOnlyUse)
{
    TypeParam r;
    r.SetValue(1.0);
    r.SetMin(0.5);
    r.SetMax(2.0);
    r.SetUse(false);
    r.ResetToDefault();
    EXPECT_TRUE(r.IsUseSet());
    EXPECT_TRUE(r.GetUse());
    EXPECT_FALSE(r.IsValueSet());
    EXPECT_FALSE(r.IsMinSet());
    EXPECT_FALSE(r.IsMaxSet());
    EXPECT_FALSE(r.HasData());
    EXPECT_TRUE(r.AnyData());
}

TYPED_TEST(UseValueRecord, UseIsOneByteInBinary)
{
    TypeParam r;
    r.SetValue(0.0);
    r.SetUse(true);
    EXPECT_EQ(hex("00000019" "02a4068a" "00000001" "01" "817e129f" "00000008" "00000004" "302e3030"),
              testsupport::binaryOf(r, 0, false));
    r.SetUse(false);
    QByteArray bytes = r.GetBinaryRepresentationAsQByteArray();
    TypeParam back;
    ASSERT_TRUE(back.SetBinaryRepresentation(bytes));
    EXPECT_TRUE(back.IsUseSet());
    EXPECT_FALSE(back.GetUse());
}

// --- single cases ----------------------------------------------------------------------------

TEST(Values, PrecisionBelowTwoDecimalsIsLostInXmlAndBinaryAlike)
{
    Frequency f;
    f.SetValue(12345.678);
    EXPECT_EQ(QStringLiteral("<Frequency>12345.68</Frequency>"), xmlOf(f));
    Frequency fromXml;
    ASSERT_TRUE(fromXml.SetXmlString(f.GetXmlString()));
    EXPECT_EQ(12345.68, fromXml.GetValue());
    EXPECT_NE(f, fromXml);

    QByteArray bytes = f.GetBinaryRepresentationAsQByteArray();
    EXPECT_TRUE(bytes.endsWith(QByteArray("12345.68")));
    Frequency fromBinary;
    ASSERT_TRUE(fromBinary.SetBinaryRepresentation(bytes));
    EXPECT_EQ(12345.68, fromBinary.GetValue());
    EXPECT_EQ(fromXml, fromBinary);
}

TEST(Values, FrequencyUseAttributeValues)
{
    Frequency f;
    ASSERT_TRUE(f.SetXmlString(QStringLiteral("<Frequency Use=\"FALSE\">1</Frequency>")));
    EXPECT_FALSE(f.GetUse());
    ASSERT_TRUE(f.SetXmlString(QStringLiteral("<Frequency Use=\"no\">1</Frequency>")));
    EXPECT_TRUE(f.GetUse());
    f.SetUse(false);
    ASSERT_TRUE(f.SetXmlString(QStringLiteral("<Frequency Use=\"\">1</Frequency>")));
    EXPECT_TRUE(f.GetUse());
    EXPECT_TRUE(f.IsUseSet());
}

TEST(Values, FrequencyResetToDefault)
{
    Frequency f;
    f.ResetToDefault();
    EXPECT_TRUE(f.IsUseSet());
    EXPECT_TRUE(f.GetUse());
    EXPECT_FALSE(f.IsValueSet());
    EXPECT_FALSE(f.IsMinSet());
    EXPECT_FALSE(f.IsMaxSet());
}

TEST(Values, IFBandwidthIgnoresAUseAttribute)
{
    IFBandwidth b = samples::ifBandwidth();
    ASSERT_TRUE(b.SetXmlString(QStringLiteral("<IFBandwidth Use=\"false\" Min=\"1\">2</IFBandwidth>")));
    EXPECT_EQ(1.0, b.GetMin());
    EXPECT_EQ(2.0, b.GetValue());
    EXPECT_EQ(10000.0, b.GetMax());
    EXPECT_FALSE(b.GetXmlString().contains(QStringLiteral("Use")));
    // Nothing of it has a built-in default.
    IFBandwidth fresh;
    fresh.ResetToDefault();
    EXPECT_FALSE(fresh.AnyData());
}

TEST(Values, IFBandwidthSkipsAUseTagInBinary)
{
    testsupport::BinaryReader reader(hex("02a4068a" "00000001" "00" "817e129f" "00000008" "00000004" "322e3530"));
    IFBandwidth b;
    b.SetBinary(reader.stream, 25);
    EXPECT_EQ(2.5, b.GetValue());
    EXPECT_FALSE(b.IsMinSet());
    EXPECT_TRUE(reader.stream.atEnd());
}

TEST(Values, SignalLengthCheckNamesMinThenMax)
{
    SignalLength s;
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { s.Check(); },
                                                QStringLiteral("SignalLength: Please set Min properly.")));
    s.SetMin(0.5);
    EXPECT_TRUE(throwsWith<OutOfRangeException>([&] { s.Check(); },
                                                QStringLiteral("SignalLength: Please set Max properly.")));
    s.SetMax(0.25);
    EXPECT_NO_THROW(s.Check());
    s.SetUse(false);
    EXPECT_NO_THROW(s.Check());
}

TEST(Values, SignalLengthWritesUseFirst)
{
    SignalLength s;
    s.SetMin(1.0);
    s.SetMax(2.5);
    EXPECT_EQ(QStringLiteral("<SignalLength><Min>1.00</Min><Max>2.50</Max></SignalLength>"), xmlOf(s));
    s.SetUse(true);
    EXPECT_EQ(QStringLiteral("<SignalLength Use=\"true\"><Min>1.00</Min><Max>2.50</Max></SignalLength>"), xmlOf(s));
    EXPECT_EQ(hex("00000029" "02a4068a" "00000001" "01"
                  "3f282542" "00000008" "00000004" "312e3030"
                  "dfaeca08" "00000008" "00000004" "322e3530"),
              testsupport::binaryOf(s, 0, false));
}

TEST(Values, SignalLengthReadsUseAsAttributeOrElement)
{
    SignalLength s;
    ASSERT_TRUE(s.SetXmlString(QStringLiteral("<SignalLength Use=\"False\"><Min>1</Min><Max>2</Max></SignalLength>")));
    EXPECT_FALSE(s.GetUse());
    ASSERT_TRUE(s.SetXmlString(QStringLiteral("<SignalLength><Use>TRUE</Use><Min>1</Min><Max>2</Max></SignalLength>")));
    EXPECT_TRUE(s.GetUse());
    ASSERT_TRUE(s.SetXmlString(QStringLiteral("<SignalLength><Use>0</Use></SignalLength>")));
    EXPECT_FALSE(s.GetUse());
    EXPECT_EQ(1.0, s.GetMin());
}

TEST(Values, SignalLengthSkipsUnknownElements)
{
    SignalLength s;
    ASSERT_TRUE(s.SetXmlString(QStringLiteral(
        "<SignalLength><Value>9</Value><Min>1</Min><Extra><Max>7</Max></Extra><Max>2</Max></SignalLength>")));
    EXPECT_FALSE(s.GetXmlString().contains(QStringLiteral("Value")));
    EXPECT_EQ(1.0, s.GetMin());
    EXPECT_EQ(2.0, s.GetMax());
}

TEST(Values, SignalLengthEmptyNumberElementGivesZero)
{
    SignalLength s = samples::signalLength();
    ASSERT_TRUE(s.SetXmlString(QStringLiteral("<SignalLength><Min/><Max>x</Max></SignalLength>")));
    EXPECT_EQ(0.0, s.GetMin());
    EXPECT_EQ(0.0, s.GetMax());
    EXPECT_TRUE(s.IsMinSet());
    EXPECT_TRUE(s.IsMaxSet());
}

TEST(Values, NegativeIdsOfBandwidthAndIFBandwidth)
{
    EXPECT_LT(Bandwidth::GetId(), 0);
    EXPECT_LT(IFBandwidth::GetId(), 0);
    EXPECT_TRUE(samples::bandwidth().GetBinaryRepresentationAsQByteArray().startsWith(hex("d6c3cd69")));
    EXPECT_TRUE(samples::ifBandwidth().GetBinaryRepresentationAsQByteArray().startsWith(hex("b7f0c2e1")));
}
