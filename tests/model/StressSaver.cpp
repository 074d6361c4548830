// A session of the editor, or another program, for stress_test.py. In the present folder it sets
// one key of its side after the other, saves each, and writes down what was saved when.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>

#include "tests/model/fakes/SessionWorld.h"

// Writes that many keys in ways of its own; in StressWriter_win32.cpp.
int WriteAsAnotherProgram(int count);

namespace tamarind {
namespace {

constexpr int kFailed = 3;
constexpr unsigned kPauseMs = 30;

// A session over the real files of the present folder.
struct StressWorld {
    const std::string folder = (std::filesystem::current_path() / "").string();
    DiskFileSystem disk;
    IniFiles files{disk};
    MemoryRegistry registry;
    FakeEnvironment environment;
    ScriptedPrompts prompts;
    FakePrograms programs;
    EditorSession session{
        {files, registry, environment, prompts, programs, folder, "5.01", {15360, 11520}}};

    bool Start() {
        prompts.filesToChoose = {folder + "Wincmd.ini"};  // asked for at the first start
        session.LoadSettings();
        return session.Activate('"' + folder + "keys.tmdf\"") &&
               session.Settings().Path() == folder + "Wincmd.ini";
    }
    std::vector<std::string> Rows() { return RowsOf(session.Selection()); }
    void WaitFor(const char* name) {
        while (!disk.Stamp(name)) {
            disk.Sleep(20);
        }
    }
};

// A save that fails leaves its key pending, and is tried again.
void SaveKey(StressWorld& world, const std::string& key, int value, std::ostream& log) {
    world.session.Commands().SetValue(std::to_string(value));
    for (bool isSaved = false; !isSaved;) {
        const std::uint64_t start = world.disk.NowTicks();
        isSaved = world.session.Settings().SaveToSettingsFile();
        const std::uint64_t end = world.disk.NowTicks();
        std::string outcome = isSaved ? "saved" : "failed " + world.prompts.messages.back();
        std::replace(outcome.begin(), outcome.end(), '\n', ' ');
        log << key << ' ' << value << ' ' << start << ' ' << end << ' ' << outcome << std::endl;
    }
}

// Prints how many rows there are, how many do not say what the file says in the end, and how many
// questions were asked: no key is changed by two sides.
int RunSession(const std::string& side, int count) {
    StressWorld world;
    if (!world.Start()) {
        return kFailed;
    }
    const bool isFirst = side == "One";
    std::size_t row = isFirst ? 0 : static_cast<std::size_t>(count);
    std::minstd_rand random(isFirst ? 1 : 2);
    std::ofstream log(side + ".log");
    world.WaitFor("go");
    for (int value = 1; value <= count; ++value, ++row) {
        const std::string key = side + std::to_string(value);
        world.session.Selection().Rows().ShowKeyDetails(row);
        if (world.session.Selection()
                .Rows()
                .Record(*world.session.Selection().Rows().CurrentKey())
                .keyName != key) {
            return kFailed;
        }
        SaveKey(world, key, value, log);
        if (random() % 3 == 0) {
            world.session.Settings().CheckOutsideChanges();
        }
        world.disk.Sleep(static_cast<unsigned>(random() % kPauseMs));
    }
    world.WaitFor("stop");
    while (world.session.Settings().CheckOutsideChanges() != OutsideCheck::Taken) {
        world.disk.Sleep(100);
    }
    StressWorld fresh;
    if (!fresh.Start()) {
        return kFailed;
    }
    const std::vector<std::string> read = fresh.Rows();
    std::vector<std::string> shown = world.Rows();
    shown.resize(read.size());
    int different = 0;
    for (row = 0; row < read.size(); ++row) {
        different += shown[row] != read[row] ? 1 : 0;
    }
    std::cout << read.size() << ' ' << different << ' ' << world.prompts.asked.size() << std::endl;
    return 0;
}

}  // namespace
}  // namespace tamarind

// The side and how often it writes.
int main(int, char** arguments) {
    const std::string side = arguments[1];
    const int count = std::stoi(arguments[2]);
#ifdef _WIN32
    if (side == "Theirs") {
        return WriteAsAnotherProgram(count);
    }
#endif
    return tamarind::RunSession(side, count);
}
