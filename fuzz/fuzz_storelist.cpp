// Feeds arbitrary bytes to the readers of a store list: as binary, as
// compressed binary and as XML text. A failed read must keep what the list
// held; nothing may crash.
//
// Built with clang and -DMORVANE_BUILD_FUZZERS=ON it is a libFuzzer target;
// otherwise it is a replay driver that runs the same code over the files given
// on its command line (ctest replays the bundled examples with it).

#include <morvane.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>

#include <cstdio>
#include <cstdlib>

namespace {

Morvane::FrequencyStoreList &reference()
{
    static Morvane::FrequencyStoreList list = [] {
        Morvane::FrequencyStoreList l;
        l.SetName(QStringLiteral("reference"));
        return l;
    }();
    return list;
}

void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "fuzz_storelist: %s\n", what);
        std::abort();
    }
}

void readAll(const QByteArray &input)
{
    {
        Morvane::FrequencyStoreList list = reference();
        QByteArray bytes = input;
        if (!list.SetBinaryRepresentation(bytes))
            require(list == reference(), "a failed binary read changed the list");
    }
    {
        Morvane::FrequencyStoreList list = reference();
        if (!list.SetCompressedBinaryRepresentation(input))
            require(list == reference(), "a failed compressed read changed the list");
    }
    {
        Morvane::FrequencyStoreList list = reference();
        list.SetValidate(input.size() % 2 == 0);
        if (!list.SetXmlString(QString::fromUtf8(input)))
            require(list == reference(), "a failed XML read changed the list");
    }
}

} // namespace

// Qt's warnings about damaged input (zlib errors and the like) are expected
// here by the thousand; they are not failures.
void quiet(QtMsgType, const QMessageLogContext &, const QString &)
{
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    static const auto previous = qInstallMessageHandler(quiet);
    (void)previous;
    readAll(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}

#ifndef MORVANE_LIBFUZZER
int main(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        QFile file(QString::fromLocal8Bit(argv[i]));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot open %s\n", argv[i]);
            return 1;
        }
        const QByteArray data = file.readAll();
        // The whole file, and every prefix of it at a few hundred cuts.
        const int step = qMax(1, int(data.size() / 300));
        for (int n = 0; n <= data.size(); n += step)
            readAll(data.left(n));
        readAll(data);
    }
    return 0;
}
#endif
