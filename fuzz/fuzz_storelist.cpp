// Feeds arbitrary bytes to the readers of a store list: as binary, as
// compressed binary and as XML text. A failed read must keep what the list
// held; nothing may crash.
//
// Built with clang and -DMORVANE_BUILD_FUZZERS=ON it is a libFuzzer target;
// otherwise it is a replay driver that runs the same code over the files and
// folders given on its command line (ctest replays the bundled examples and
// the corpus folder fuzz/corpus/storelist/ with it).

#include <morvane.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringList>

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
namespace {

// The files to replay: a file stands for itself, a folder for the files in
// it (not below it), by name, as libFuzzer takes a corpus folder.
bool collect(const QString &path, QStringList &files)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        const QDir dir(path);
        const QStringList names = dir.entryList(QDir::Files, QDir::Name);
        if (names.isEmpty()) {
            std::fprintf(stderr, "no inputs in %s\n", qPrintable(path));
            return false;
        }
        for (const QString &name : names)
            files.append(dir.filePath(name));
        return true;
    }
    files.append(path);
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    qInstallMessageHandler(quiet);
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        if (!collect(QString::fromLocal8Bit(argv[i]), files))
            return 1;
    }
    for (const QString &fileName : files) {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot open %s\n", qPrintable(fileName));
            return 1;
        }
        const QByteArray data = file.readAll();
        // The whole file, and every prefix of it at a few hundred cuts.
        const int step = qMax(1, int(data.size() / 300));
        for (int n = 0; n <= data.size(); n += step)
            readAll(data.left(n));
        readAll(data);
    }
    std::printf("replayed %d inputs\n", int(files.size()));
    return 0;
}
#endif
