// Every window opened and closed again and again: the memory in use, the widgets and the open files stay what
// they were. The long form (GENVARA_ABUSE=long) does it 200 times.

#include <malloc.h>

#include <QLabel>
#include <QPixmapCache>
#include <QTest>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <string_view>

#include "MakeLoadForm.h"
#include "WindowFixture.h"
#include "frmAbout.h"
#include "frmAddLoad.h"
#include "frmAddStep.h"
#include "frmDefaults.h"
#include "frmEditStep.h"
#include "frmErrLog.h"
#include "frmOptions.h"

namespace genvara {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

/// Openings before the first look: fonts, icons and styles are loaded once and kept.
constexpr int kWarmUp = 5;
/// Stretches of openings, of whose growths the middle one counts: a leak is in all of them, while a cache of
/// the toolkit grows in one now and then.
constexpr std::size_t kStretches = 5;
/// Most growth of the memory for an opening [B]: half of what the barest window takes. Most windows come to
/// 0.
constexpr double kMostGrowth = 1024;

int Openings() {
    const char* form = std::getenv("GENVARA_ABUSE");
    return form != nullptr && std::string_view(form) == "long" ? 200 : 20;
}

/// What a window must give back.
struct InUse {
    std::size_t bytes;
    qsizetype widgets;
    std::ptrdiff_t files;
};

InUse Look() {
    QPixmapCache::clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    const struct mallinfo2 heap = mallinfo2();
    return {.bytes = heap.uordblks + heap.hblkhd,
            .widgets = QApplication::allWidgets().size(),
            .files = std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {})};
}

class OpenClose : public WindowTest {
  protected:
    /// How far the program grows: bytes for an opening, widgets and files for all of them.
    struct Growth {
        double bytes;
        qsizetype widgets;
        std::ptrdiff_t files;
    };

    static Growth Repeat(const std::function<void()>& openAndClose) {
        const auto stretch = [&openAndClose](int openings) {
            for (int i = 0; i < openings; ++i) {
                openAndClose();
            }
            return Look();
        };
        const int openings = Openings() / static_cast<int>(kStretches);
        const InUse first = stretch(kWarmUp);
        InUse last = first;
        std::array<double, kStretches> growths{};
        for (double& growth : growths) {
            const InUse now = stretch(openings);
            growth = (static_cast<double>(now.bytes) - static_cast<double>(last.bytes)) / openings;
            last = now;
        }
        std::ranges::sort(growths);
        return {.bytes = growths[kStretches / 2],
                .widgets = last.widgets - first.widgets,
                .files = last.files - first.files};
    }
    static void ExpectFlat(const std::function<void()>& openAndClose) {
        const Growth growth = Repeat(openAndClose);
        EXPECT_LE(growth.widgets, 0);
        EXPECT_LE(growth.files, 0);
        if (!kSanitized) {  // the sanitizers' heap tells nothing, and they find leaks themselves
            ASSERT_STREQ(std::getenv("GLIBC_TUNABLES"), "glibc.malloc.tcache_count=0") << "see above";
            RecordProperty("bytes", std::to_string(growth.bytes));
            EXPECT_LT(growth.bytes, kMostGrowth);
        }
    }
    /// A window on the screen, with its events, for as long as it takes to paint it.
    static void ShowAndClose(QWidget& window) {
        window.show();
        QCoreApplication::processEvents();
        (void)window.grab();
        window.close();
    }
    [[nodiscard]] LoadFormServices Services() {
        return {
            .owner = &Window(),
            .platform = platform,
            .host = Window(),
            .project = {
                .profile = App().LoadProfile(), .site = App().PowerSystem(), .catalogue = App().Catalogue()}};
    }
};

TEST_F(OpenClose, ALeakWouldBeSeen) {
    std::vector<std::unique_ptr<QWidget>> kept;
    kept.reserve(1000);
    const Growth growth = Repeat([&] { kept.push_back(std::make_unique<QLabel>("left behind")); });
    EXPECT_EQ(growth.widgets, Openings());
    if (!kSanitized) {
        EXPECT_GT(growth.bytes, kMostGrowth);
        RecordProperty("bytes", std::to_string(growth.bytes));
    }
}

TEST_F(OpenClose, AFileLeftOpenWouldBeSeen) {
    std::vector<std::unique_ptr<std::ifstream>> kept;
    const Growth growth = Repeat([&] { kept.push_back(std::make_unique<std::ifstream>("/dev/null")); });
    EXPECT_EQ(growth.files, Openings());
}

TEST_F(OpenClose, Options) {
    ExpectFlat([this] {
        frmOptions window(
            platform, App(), [](bool) {}, &Window());
        ShowAndClose(window);
    });
}

TEST_F(OpenClose, Defaults) {
    ExpectFlat([this] {
        frmDefaults window(platform, App(), &Window());
        ShowAndClose(window);
    });
}

TEST_F(OpenClose, About) {
    ExpectFlat([this] {
        frmAbout window(platform, App(), &Window());
        ShowAndClose(window);
    });
}

TEST_F(OpenClose, ThroughTheMenus) {
    ExpectFlat([this] {
        for (const char* command : {"mnuToolsOptions", "mnuToolsDefaults", "mnuHelpAbout"}) {
            InNextDialog([](QDialog& dialog) { dialog.reject(); });
            Run(command);
        }
    });
}

TEST_F(OpenClose, Steps) {
    AddStepWithLoad();
    ExpectFlat([this] {
        frmAddStep added(platform, App().LoadProfile(), App().PowerSystem(), &Window());
        ShowAndClose(added);
        frmEditStep edited(platform, App().PowerSystem(), &Window());
        edited.LoadStep(App().LoadProfile().LoadStep(1));
        ShowAndClose(edited);
    });
}

TEST_F(OpenClose, KindsOfLoads) {
    ExpectFlat([this] {
        frmAddLoad window(
            platform, [](std::int32_t, QWidget*) {}, &Window());
        ShowAndClose(window);
    });
}

TEST_F(OpenClose, EntryFormsOfEveryKind) {
    AddStepWithLoad();
    int kinds = 0;
    for (std::int32_t type = 0; type < 32; ++type) {
        SCOPED_TRACE(type);
        if (MakeLoadForm(type, Services())) {
            ++kinds;
            ExpectFlat([this, type] { ShowAndClose(*MakeLoadForm(type, Services())); });
        }
    }
    EXPECT_GT(kinds, 0);
}

TEST_F(OpenClose, ErrorLog) {
    ErrorLog log(folder.Path());
    ExpectFlat([&log] {
        frmErrLog window(log);
        ShowAndClose(window);
    });
}

TEST_F(OpenClose, PanelsWithAProject) {
    Open(Sample("hospital.prj"));
    ExpectFlat([this] {
        for (const int panel : {3, 2, 1, 0}) {
            Bar(panel);
            QCoreApplication::processEvents();
        }
    });
}

TEST_F(OpenClose, ProjectsOverEachOther) {
    ExpectFlat([this] {
        Open(Sample("hospital.prj"));
        Open(Sample("farm.prj"));
        (void)platform.Take();
    });
}

TEST_F(OpenClose, TheProgram) {
    ExpectFlat([this] { Restart(); });
}

}  // namespace
}  // namespace genvara
