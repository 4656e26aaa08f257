// Reading, writing and saving a profile of 4 KB, each compared with the least that it could take: the parser alone, and
// a bare write and rename. Nothing is synced in either. Then hostile files, each read or refused by a process of its
// own: the processor time that this takes, and the memory in addition to that of a process that reads nothing.

#include "platform/core/FileCalls.h"
#include "storage/XmlDocument.h"
#include "storage/XmlReader.h"
#include "storage/XmlWriter.h"

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace veldan;

namespace {

CString Repeat(std::size_t bytes, const CString& text) {
    CString all;
    for (all.reserve(bytes + text.size()); all.size() < bytes;) {
        all += text;
    }
    return all;
}

const CString& Profile() {
    static const CString s_profile =
        "<?xml version=\"1.0\" ?>\r\n<Profile>\r\n" +
        Repeat(4000, "    <VideoSizeList value=\"Original,3840x2160,2560x1440,1920x1080\" index=\"12\"/>\r\n") +
        "</Profile>\r\n";
    return s_profile;
}

void BareParse(benchmark::State& state) {
    for (auto _ : state) {
        xmlFreeDoc(xmlReadMemory(Profile().data(), static_cast<int>(Profile().size()), nullptr, nullptr, 0));
    }
}
BENCHMARK(BareParse);

void Read(benchmark::State& state) {
    XmlFault fault;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadXml(Profile(), fault));
    }
}
BENCHMARK(Read);

void Write(benchmark::State& state) {
    XmlFault fault;
    const auto pTree = ReadXml(Profile(), fault);
    for (auto _ : state) {
        benchmark::DoNotOptimize(WriteXml(*pTree));
    }
}
BENCHMARK(Write);

/// A temporary folder, in TMPDIR if that is set, which the destructor removes.
class Folder {
public:
    Folder() : m_path(mkdtemp(m_strTemplate.data())) {}
    ~Folder() { std::filesystem::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    [[nodiscard]] CString operator/(const char* pszName) const { return m_path / pszName; }

private:
    CString m_strTemplate = std::filesystem::temp_directory_path() / "veldan-bench-XXXXXX";
    std::filesystem::path m_path;
};

/// Saves two documents alternately that differ in one letter, so that each save has something to do.
void Save(benchmark::State& state) {
    FileCalls calls = SystemFileCalls();
    calls.fsync = [](int) { return 0; };
    ReplaceFileCalls(&calls);
    const Folder folder;
    const CString path = folder / "a.xml";
    std::ofstream(path) << Profile();
    XmlDocument document;
    bool bGood = document.Load(path);
    const XmlNode list = document.GetRootElement()->GetChild("VideoSizeList", true);
    for (auto _ : state) {
        bGood = list.SetAttribute("index", bGood ? "13" : "14", "", "") && document.Save(nullptr) && !bGood;
    }
    ReplaceFileCalls(nullptr);
}
BENCHMARK(Save);

void BareWriteAndRename(benchmark::State& state) {
    const Folder folder;
    const CString path = folder / "a.xml";
    const CString temporary = folder / "b.xml";
    bool bGood = true;
    for (auto _ : state) {
        const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        bGood = write(file, Profile().data(), Profile().size()) == std::ssize(Profile()) && bGood;
        close(file);
        bGood = rename(temporary.c_str(), path.c_str()) == 0 && bGood;
    }
    if (!bGood) {
        state.SkipWithError("the disk doesn't take the file");
    }
}
BENCHMARK(BareWriteAndRename);

using Make = void (*)(const CString& path);

constexpr std::size_t kMost = 16 * 1024 * 1024;

template <class Text>
void Put(const CString& path, const Text& text) {
    std::ofstream(path, std::ios::binary) << text;
}

CString Attributes(int from, int to) {
    CString tag = "<a";
    for (int i = from; i < to; ++i) {
        tag += Format(" b%d=''", i);
    }
    return tag;
}

/// Padded to the largest size that is read.
void Fill(const CString& path, const CString& begin, const CString& text, const CString& end) {
    Put(path, begin + Repeat(kMost - begin.size() - end.size() - text.size(), text) + end);
}

struct Hostile {
    const char* pszName;
    Make make;
};

const Hostile kHostile[] = {
    {"nothing", [](const CString&) {}},
    {"bomb", [](const CString& path) { Put(path, "<!DOCTYPE a [<!ENTITY b 'bbbb'><!ENTITY c '&b;&b;'>]><a>&c;</a>"); }},
    {"levels", [](const CString& path) { Put(path, Repeat(300'000, "<a>") + Repeat(400'000, "</a>")); }},
    {"attribute", [](const CString& path) { Fill(path, "<a b='", "x", "'/>"); }},
    {"wide attribute", [](const CString& path) { Put(path, "<a b='" + Repeat(9'900'000, "高") + "'/>"); }},
    {"20000 attributes", [](const CString& path) { Put(path, Attributes(0, 20'000) + "/>"); }},
    {"full tags", [](const CString& path) { Fill(path, "<a>", Attributes(0, 1024) + "/>", "</a>"); }},
    {"namespaces", [](const CString& path) { Fill(path, "<a>", "<b xmlns:c='d' xmlns:e='f' c:g='' e:g=''>", "</a>"); }},
    {"elements", [](const CString& path) { Fill(path, "<a>", "<b/>", "</a>"); }},
    {"texts", [](const CString& path) { Fill(path, "<a>", Repeat(1000, "text ") + "<b/>", "</a>"); }},
    {"wide texts", [](const CString& path) { Fill(path, "<a>", Repeat(1000, "高清") + "<b/>", "</a>"); }},
    {"ampersands", [](const CString& path) { Fill(path, "<a>", "&", "</a>"); }},
    {"references", [](const CString& path) { Fill(path, "<a>", "&amp;", "</a>"); }},
    {"brackets", [](const CString& path) { Fill(path, "<a>", "<", "</a>"); }},
    {"names", [](const CString& path) { Fill(path, "<a ", "b", "=''/>"); }},
    {"comment", [](const CString& path) { Fill(path, "<a><!--", " x ", "--></a>"); }},
    {"section", [](const CString& path) { Fill(path, "<a><![CDATA[", "]] ", "]]></a>"); }},
    {"ends", [](const CString& path) { Fill(path, "<a>", "</b>", "</a>"); }},
    {"latin", [](const CString& path) { Fill(path, "<?xml version='1.0' encoding='latin1'?><a>", "\xe4", "</a>"); }},
    {"chinese",
     [](const CString& path) { Fill(path, "<?xml version='1.0' encoding='gb2312'?><a>", "\xb8\xdf", "</a>"); }},
    {"zeros", [](const CString& path) { Put(path, ""), std::filesystem::resize_file(path, kMost); }},
    {"pipe", [](const CString& path) { mkfifo(path.c_str(), 0666); }},
    {"folder", [](const CString& path) { std::filesystem::create_directory(path); }},
    {"device", [](const CString& path) { std::filesystem::create_symlink("/dev/zero", path); }},
};

struct Outcome {
    double seconds;
    bool bRead;
};

double ProcessorSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

/// The peak memory in KiB of a process that loads the file.
long LoadApart(const CString& path, Outcome& outcome) {
    const pid_t child = fork();
    if (child == 0) {
        const double begin = ProcessorSeconds();
        XmlDocument document;
        outcome.bRead = document.Load(path);
        document.Reset();
        outcome.seconds = ProcessorSeconds() - begin;
        _exit(0);
    }
    int status = 0;
    rusage usage = {};
    wait4(child, &status, 0, &usage);
    return status == 0 ? usage.ru_maxrss : -1;
}

void LoadHostile(benchmark::State& state) {
    const Hostile& hostile = kHostile[state.range(0)];
    const Folder folder;
    hostile.make(folder / "a.xml");
    malloc_trim(0);
    void* const pShared = mmap(nullptr, sizeof(Outcome), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& outcome = *new (pShared) Outcome{};
    const long bare = LoadApart(folder / "missing", outcome);
    long most = 0;
    for (auto _ : state) {
        most = LoadApart(folder / "a.xml", outcome);
        state.SetIterationTime(outcome.seconds);
    }
    state.SetLabel(
        Format("%s: %s, %ld MiB", hostile.pszName, outcome.bRead ? "read" : "refused", (most - bare) / 1024));
    munmap(pShared, sizeof(Outcome));
}
BENCHMARK(LoadHostile)
    ->DenseRange(0, std::ssize(kHostile) - 1)
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

}  // namespace
