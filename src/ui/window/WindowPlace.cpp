#include "WindowPlace.h"

#include <QScreen>
#include <QWidget>
#include <utility>
#include <variant>

#include "FailureRegion.h"
#include "clsTRX_Registry.h"

namespace genvara {
namespace {

constexpr const char* kGeometry = "Geometry";
/// What a window manager's frame takes [pixels].
constexpr QSize kFrame(0, 40);

}  // namespace

WindowPlace::WindowPlace(clsTRX_Registry& registry, std::string key)
    : m_registry(&registry), m_key(std::move(key)) {}

void WindowPlace::Open(bool create) const {
    m_registry->RootKey(HKEY_LOCAL_MACHINE);
    m_registry->SubKey(m_key);
    m_registry->AutoCreate(create);
    m_registry->OpenKey();
}

void WindowPlace::Restore(QWidget& window, QSize first) const {
    window.resize(first.boundedTo(window.screen()->availableSize() - kFrame));
    FailureRegion region;
    region.Run([&] {
        Open(false);
        const auto geometry = std::get<std::string>(m_registry->Value(kGeometry, registry_type::REG_SZ));
        const QByteArray kept = QByteArray::fromHex(QByteArray::fromStdString(geometry));
        // What was cut short would be taken for a window without any size.
        if (kept.size() == window.saveGeometry().size()) {
            (void)window.restoreGeometry(kept);
        }
    });
    m_registry->CloseKey();
}

void WindowPlace::Keep(const QWidget& window) const {
    FailureRegion region;
    region.Run([&] {
        Open(true);
        m_registry->Value(kGeometry, registry_type::REG_SZ, window.saveGeometry().toHex().toStdString());
    });
    m_registry->CloseKey();
}

}  // namespace genvara
