#pragma once

#include <QString>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Chart.h"
#include "DateTime.h"
#include "PageFlow.h"
#include "PlatformServices.h"
#include "PrintSetup.h"

class QAction;

namespace genvara {

/// A chart or a table that may be taken along.
struct Exhibit {
    TextGrid table;
    ChartPtr chart{};  ///< none for a table
};

/// Copies, saves and prints charts, tables, and pages made of them.
class ExhibitDesk {
  public:
    struct Surroundings {
        PlatformServices& platform;
        std::function<PrintSetup()> printSetup;
        std::function<QString()> projectName;
        /// What stands in the way of writing to a file, as the end of a sentence.
        std::function<std::optional<std::string>(const std::filesystem::path&)> obstacle;
        Clock clock;
    };
    /// All of them outlive the desk.
    explicit ExhibitDesk(Surroundings surroundings);

    /// To the clipboard: a table as text with tabs, a chart as a picture as well.
    static void Copy(const Exhibit& exhibit);
    /// Each asks for a name and tells why it could not be written.
    void SaveAsPdf(QWidget* owner, const Exhibit& exhibit) const;
    void SaveAsSvg(QWidget* owner, const Exhibit& exhibit) const;
    void SaveAsCsv(QWidget* owner, const Exhibit& exhibit) const;
    void Print(QWidget* owner, const Exhibit& exhibit) const;

    /// The time that reports are dated by.
    [[nodiscard]] DateTime Now() const { return m_around.clock(); }

    // Whole reports.
    void SavePages(QWidget* owner, const QString& title, std::vector<FlowBlock> blocks) const;
    void PrintPages(QWidget* owner, const QString& title, std::vector<FlowBlock> blocks) const;

    /// Gives a widget the five commands as its context menu, which its keys reach too.
    /// @param shown what the widget shows now; nothing while it shows nothing
    void AddCommands(QWidget& widget, const std::function<std::optional<Exhibit>()>& shown) const;

  private:
    struct Target {
        QString title;
        const char* extension;
        const char* filter;
    };
    void Save(QWidget* owner, const Target& target, const std::function<QByteArray()>& make) const;
    [[nodiscard]] QByteArray Pdf(const QString& title, std::vector<FlowBlock> blocks) const;
    void Tell(QWidget* owner, const std::string& text) const;

    Surroundings m_around;
};

/// A chart or table as an SVG drawing.
[[nodiscard]] QByteArray SvgOf(const Exhibit& exhibit);

}  // namespace genvara
