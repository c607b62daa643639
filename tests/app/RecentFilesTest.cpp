#include "RecentFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SettingsFile.h"
#include "TemporaryFolder.h"
#include "clsTRX_HelpFile.h"

#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Store {
    TemporaryFolder folder;
    SettingsFile settings{folder / "settings.json"};
    clsTRX_Registry registry{settings};
    RecentFiles recent{registry, "Software\\Morvane\\Genvara\\8.0.0\\"};
};

TEST(RecentFiles, AreNoneOnAFirstRun) {
    const Store store;
    EXPECT_THAT(store.recent.Read(), IsEmpty());
}

TEST(RecentFiles, KeepFourTheNewestFirst) {
    const Store store;
    for (const char* name : {"a.prj", "b.prj", "c.prj", "d.prj", "e.prj"}) {
        store.recent.Add(name);
    }
    EXPECT_THAT(store.recent.Read(), ElementsAre("e.prj", "d.prj", "c.prj", "b.prj"));
}

TEST(RecentFiles, EndAtTheFirstEmptyEntry) {
    Store store;
    store.recent.Add("a.prj");
    store.recent.Add("b.prj");
    store.recent.Add("c.prj");
    store.registry.OpenKey();
    store.registry.Value("2", registry_type::REG_SZ, std::string());
    EXPECT_THAT(store.recent.Read(), ElementsAre("c.prj"));
    // "3" is copied to "4", the empty "2" is not copied to "3", which keeps what it had, and "1" goes to "2".
    store.recent.Add("d.prj");
    EXPECT_THAT(store.recent.Read(), ElementsAre("d.prj", "c.prj", "a.prj", "a.prj"));
}

TEST(HelpFile, AMissingFileLeavesTheFormerName) {
    const TemporaryFolder folder;
    WriteBytes(folder / "help.html", "x");
    clsTRX_HelpFile help;
    help.Filename((folder / "help.html").string());
    EXPECT_THAT([&] { help.Filename((folder / "none.html").string()); },
                Raises(0x8004044F, "clsTRX_HelpFileFilename <property let> --- ", "Help file not found."));
    EXPECT_EQ(help.Filename(), folder / "help.html");
}

TEST(HelpFile, HandsItsCommandsToTheViewer) {
    clsTRX_HelpFile help;
    std::vector<std::int32_t> commands;
    bool works = true;
    help.RequestingWindow(77);
    help.HelpViewer([&](std::int32_t window, const std::string&, std::int32_t command) {
        EXPECT_EQ(window, 77);
        commands.push_back(command);
        return works;
    });
    help.ShowHelp();
    help.CloseFile();
    EXPECT_THAT(commands, ElementsAre(11, 2));
    works = false;
    EXPECT_THAT([&] { help.CloseFile(); },
                Raises(0x8004044D, "CloseFile <sub> --- ", "Unable to close help file window."));
    EXPECT_THAT([&] { help.ShowHelp(); },
                Raises(0x8004044E, ".ShowHelp", "Unable to display requested help window."));
}

TEST(HelpFile, FailsWithoutAViewer) {
    const clsTRX_HelpFile help;
    EXPECT_THAT([&] { help.CloseFile(); },
                Raises(0x8004044D, "CloseFile <sub> --- ", "Unable to close help file window."));
}

}  // namespace
}  // namespace genvara
