#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "design/design.h"
#include "design/save.h"
#include "system/replace_file.h"
#include "tests/support/files.h"
#include "tests/tools/design/saved_objects.h"
#include "tests/tools/sample_circuit.h"
#include "text/failure.h"

namespace {

std::vector<std::string> flushed;  // the paths that were flushed to the disk, in order

}  // namespace

// In the place of the system's own, which flushes too.
extern "C" int fsync(int file) {
    std::error_code ignored;
    flushed.push_back(std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), ignored).string());
    return static_cast<int>(syscall(SYS_fsync, file));
}

namespace {

namespace fs = std::filesystem;

using vrl_test::readFile;
using vrl_test::SampleCircuit;
using vrl_test::savedObjects;
using vrl_test::TemporaryFolder;
using vrl_test::writeFile;
using vrltool::Failure;
using vrltool::saveDesign;
using vrltool::saveFile;

/// What a work ends with: the text of its Failure and the hint, or "saved".
template <class Work>
std::string outcomeOf(Work work) {
    try {
        work();
    } catch (Failure const& failure) {
        return std::string(failure.what()) + "; " + failure.hint();
    }
    return "saved";
}

unsigned modeOf(fs::path const& path) { return static_cast<unsigned>(fs::status(path).permissions()); }

std::vector<std::string> namesIn(fs::path const& folder) {
    std::vector<std::string> names;
    for (auto const& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(SaveFile, MakesAFileWithTheModeThatTheMaskLeaves) {
    TemporaryFolder const folder;
    mode_t const before = umask(027);
    saveFile(folder / "new", std::string("a\0b", 3));
    umask(before);
    EXPECT_EQ(readFile(folder / "new"), std::string("a\0b", 3));
    EXPECT_EQ(modeOf(folder / "new"), 0640u);
    EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{"new"});
}

TEST(SaveFile, KeepsTheModeOfTheFileBefore) {
    TemporaryFolder const folder;
    writeFile(folder / "old", "before");
    fs::permissions(folder / "old", fs::perms(0604));
    saveFile(folder / "old", "after");
    EXPECT_EQ(readFile(folder / "old"), "after");
    EXPECT_EQ(modeOf(folder / "old"), 0604u);
}

TEST(SaveFile, WritesTheFileThatALinkLeadsTo) {
    TemporaryFolder const folder;
    writeFile(folder / "real/file", "before");
    fs::create_symlink("real/file", folder / "link");
    saveFile(folder / "link", "after");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(readFile(folder / "real/file"), "after");
    EXPECT_EQ(namesIn(folder / "real"), std::vector<std::string>{"file"});
}

TEST(SaveFile, WritesWhereALinkToNothingLeads) {
    TemporaryFolder const folder;
    fs::create_symlink("later", folder / "link");
    saveFile(folder / "link", "after");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(readFile(folder / "later"), "after");
}

TEST(SaveFile, FailsForLinksThatLeadInACircle) {
    TemporaryFolder const folder;
    fs::create_symlink("b", folder / "a");
    fs::create_symlink("a", folder / "b");
    std::string const path = folder / "a";
    EXPECT_EQ(outcomeOf([&] { saveFile(path, "text"); }),
              path + ": cannot be replaced: Too many levels of symbolic links; name the file itself");
    EXPECT_TRUE(fs::is_symlink(folder / "a"));
}

TEST(SaveFile, SaysThatTheFolderIsMissing) {
    TemporaryFolder const folder;
    std::string const path = folder / "no/file";
    EXPECT_EQ(outcomeOf([&] { saveFile(path, "text"); }),
              path + ": cannot make a file in its folder: No such file or directory; make the folder first");
}

TEST(SaveFile, RefusesToReplaceAFolderOrADevice) {
    TemporaryFolder const folder;
    fs::create_directory(folder / "sub");
    std::string const path = folder / "sub";
    EXPECT_EQ(outcomeOf([&] { saveFile(path, "text"); }), path + ": is a folder; name a regular file");
    EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{"sub"});
    EXPECT_EQ(outcomeOf([&] { saveFile("/dev/null", "text"); }), "/dev/null: is no regular file; name a regular file");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

/// Does a work in a child process; returns its exit status, or 128 and the signal that ended it.
template <class Work>
int inChild(Work work) {
    pid_t const child = fork();
    if (child == 0) _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

TEST(SaveFile, LeavesTheOldFileWhereItsFolderMustNotBeWritten) {
    TemporaryFolder const folder;
    std::string const path = writeFile(folder / "kept/file", "before");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder / "kept", fs::perms(0555));
    int const status = inChild([&] {
        if (geteuid() == 0 && setuid(65534) != 0) return 9;  // the mode is no hindrance to the superuser
        return outcomeOf([&] { saveFile(path, "after"); }) ==
                       path + ": cannot make a file in its folder: Permission denied; name a file in a folder that "
                              "you may write to; the file is as it was before"
                   ? 0
                   : 1;
    });
    fs::permissions(folder / "kept", fs::perms(0755));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(path), "before");
}

/// Writes over a file where 4,096 bytes are the most that a file may have.
template <class Write>
void expectTheOldFileWithoutRoom(TemporaryFolder const& folder, std::string const& before, Write const& write) {
    std::string const path = writeFile(folder / "file", before);
    int const status = inChild([&] {
        rlimit const most{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &most);
        return outcomeOf([&] { write(path); }) ==
                       path + ": cannot be written: File too large; raise the limit of the size of files; the file "
                              "is as it was before"
                   ? 0
                   : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(path), before);
    EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{"file"});
}

TEST(SaveFile, LeavesTheOldFileIfThereIsNoRoom) {
    TemporaryFolder const folder;
    expectTheOldFileWithoutRoom(folder, "before",
                                [&](std::string const& path) { saveFile(path, std::string(100000, 'x')); });
}

TEST(SaveFile, LeavesTheOldFileIfTheProgramIsEndedMeanwhile) {
    TemporaryFolder const folder;
    std::string const path = writeFile(folder / "file", "before");
    int const status = inChild([&] {
        vrltool::replaceFile(path, [](std::ostream& out) {
            out << std::string(100000, 'x') << std::flush;
            raise(SIGKILL);
        });
        return 0;
    });
    EXPECT_EQ(status, 128 + SIGKILL);
    EXPECT_EQ(readFile(path), "before");
}

TEST(SaveFile, DoesNotReplaceWhatIsReadOnly) {
    TemporaryFolder const folder;
    std::string const path = writeFile(folder / "kept", "before");
    fs::permissions(path, fs::perms(0444));
    EXPECT_EQ(outcomeOf([&] { saveFile(path, "after"); }),
              path + ": is read-only; give it the permission to write, or name another file");
    EXPECT_EQ(readFile(path), "before");
    EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{"kept"});
}

TEST(SaveFile, ShowsReadersTheOldOrTheNewContentOnly) {
    TemporaryFolder const folder;
    std::string const path = writeFile(folder / "file", std::string(200000, 'a'));
    std::ifstream const reader(path, std::ios::binary);
    saveFile(path, std::string(200000, 'b'));
    std::string const seen(std::istreambuf_iterator<char>(reader.rdbuf()), {});
    EXPECT_EQ(seen, std::string(200000, 'a'));
    EXPECT_EQ(readFile(path), std::string(200000, 'b'));
}

TEST(SaveFile, FlushesTheFileAndThenItsFolder) {
    TemporaryFolder const folder;
    flushed.clear();
    saveFile(folder / "a.txt", "text");
    ASSERT_EQ(flushed.size(), 2u);
    EXPECT_EQ(fs::path(flushed[0]).parent_path(), fs::canonical(folder.path()));
    EXPECT_EQ(flushed[1], fs::canonical(folder.path()).string());
}

TEST(SaveDesign, WritesWhatReadsBackEqual) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    std::string const before = readFile(circuit.save(folder / "before.vrl"));
    saveDesign(circuit.netlist(), folder / "after.vrl");
    EXPECT_EQ(readFile(folder / "after.vrl"), before);
}

TEST(SaveDesign, WritesTheSameBytesOverADesign) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    std::string const before = readFile(circuit.save(folder / "design.vrl"));
    circuit.netlist().createNode();  // the process-wide numbers, which are saved, are not those of the file any more
    saveDesign(circuit.netlist(), folder / "new.vrl");
    saveDesign(circuit.netlist(), folder / "design.vrl");
    EXPECT_EQ(readFile(folder / "design.vrl"), readFile(folder / "new.vrl"));
    EXPECT_NE(readFile(folder / "design.vrl"), before);
}

TEST(SaveDesign, LeavesTheOldFileIfThereIsNoRoom) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    circuit.netlist().setAnnotation("note", std::string(200000, 'x'));
    expectTheOldFileWithoutRoom(folder, "", [&](std::string const& path) { saveDesign(circuit.netlist(), path); });
}

TEST(SaveDesign, RefusesToReplaceAFileWhoseKindsAreMissing) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    std::string const bytes = savedObjects().at("netlist_with_foreign_blocks");
    std::string const path = writeFile(folder / "kept.vrl", bytes);
    EXPECT_EQ(outcomeOf([&] { saveDesign(circuit.netlist(), path); }),
              path + ": is a design with 'foreignBlock', which no loaded plug-in has, so it is not replaced; give the "
                     "output a name of its own, or move the file away");
    EXPECT_EQ(readFile(path), bytes);
}

TEST(SaveDesign, RefusesToReplaceADesignThatCannotBeReadWhole) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    std::string const whole = readFile(circuit.save(folder / "kept.vrl"));
    std::string const path = writeFile(folder / "kept.vrl", whole.substr(0, whole.size() / 2));
    EXPECT_EQ(outcomeOf([&] { saveDesign(circuit.netlist(), path); }),
              path + ": begins as a saved design and cannot be read whole, so it is not replaced; give the output a "
                     "name of its own, or move the file away");
    EXPECT_EQ(readFile(path), whole.substr(0, whole.size() / 2));
}

TEST(SaveFile, RefusesToReplaceASavedDesign) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    std::string const bytes = readFile(circuit.save(folder / "kept.vrl"));
    fs::create_symlink("kept.vrl", folder / "link");
    for (char const* const name : {"kept.vrl", "link"}) {
        std::string const path = folder / name;
        EXPECT_EQ(outcomeOf([&] { saveFile(path, "text"); }),
                  path + ": is a saved design, which would be lost; give the output a name of its own, or move the "
                         "design away");
    }
    EXPECT_EQ(readFile(folder / "kept.vrl"), bytes);
}

TEST(SaveFile, TakesNamesOfEveryLengthThatAFileMayHave) {
    TemporaryFolder const folder;
    std::string const longest(255, 'n');
    saveFile(folder / longest, "text");
    EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{longest});
    std::string const path = folder / (longest + "n");
    EXPECT_EQ(outcomeOf([&] { saveFile(path, "text"); }),
              path + ": cannot be put in its place: File name too long; give it a shorter name");
    EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{longest});
}

TEST(RefuseToReplace, KnowsAnInputUnderEveryName) {
    TemporaryFolder const folder;
    std::string const input = writeFile(folder / "input", "text");
    fs::create_symlink("input", folder / "soft");
    fs::create_hard_link(input, folder / "hard");
    for (char const* const name : {"input", "soft", "hard"}) {
        std::string const output = folder / name;
        EXPECT_EQ(outcomeOf([&] {
                      vrltool::refuseToReplace(output, {"", input});
                  }),
                  output + ": is read as '" + input + "', and would be replaced; give the output a name of its own");
    }
    EXPECT_EQ(outcomeOf([&] { vrltool::refuseToReplace(writeFile(folder / "other", "text"), {input}); }), "saved");
    EXPECT_EQ(outcomeOf([&] { vrltool::refuseToReplace(folder / "new", {folder / "none"}); }), "saved");
}

TEST(SaveDesign, DoesNotReplaceAFileThatIsNoDesign) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    std::string const path = writeFile(folder / "notes.txt", "some notes\n");
    EXPECT_EQ(outcomeOf([&] { saveDesign(circuit.netlist(), path); }),
              path + ": is there already and is no saved design, so it is not replaced; give the output a name of its "
                     "own, or remove that file");
    EXPECT_EQ(readFile(path), "some notes\n");
}

TEST(SaveDesign, ReplacesAnEmptyFile) {
    TemporaryFolder const folder;
    SampleCircuit circuit;
    vrl_test::addInterferometer(circuit);
    std::string const good = readFile(circuit.save(folder / "good.vrl"));
    saveDesign(circuit.netlist(), writeFile(folder / "new", ""));
    EXPECT_EQ(readFile(folder / "new"), good);
}

}  // namespace
