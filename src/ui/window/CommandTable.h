#pragma once

#include <array>
#include <cstdint>

/// The commands of the main window: menus, toolbar and shortcuts are made from these tables.
namespace genvara {

/// A command of a menu. Its caption is a string of the table, or stands here where there is none.
struct MenuCommand {
    const char* name;
    const char* menu;
    std::int32_t string;   ///< 0 for a caption of its own
    const char* caption;   ///< "" for a string of the table; null for a separator
    const char* picture;   ///< "" for none
    const char* shortcut;  ///< "" for none; several with "; " between
};

/// A menu of the menu bar.
struct MenuTitle {
    const char* name;
    std::int32_t string;
};

inline constexpr std::array<MenuTitle, 4> kMenus{
    {{"mnuFile", 50}, {"mnuEdit", 70}, {"mnuTools", 75}, {"mnuHelp", 85}}};

inline constexpr MenuCommand Separator(const char* name, const char* menu) {
    return {name, menu, 0, nullptr, "", ""};
}

inline constexpr std::array<MenuCommand, 46> kMenuCommands{{
    {"mnuFileNew", "mnuFile", 51, "", "new", "Ctrl+N"},
    {"mnuFileOpen", "mnuFile", 52, "", "open", "Ctrl+O"},
    {"mnuFileSave", "mnuFile", 53, "", "save", "Ctrl+S"},
    {"mnuFileSaveAs", "mnuFile", 54, "", "", "Ctrl+Shift+S"},
    Separator("mnuFileSep1", "mnuFile"),
    {"mnuFileExport", "mnuFile", 0, "&Export Spec...", "export", "Ctrl+E"},
    {"mnuFileSaveReport", "mnuFile", 0, "Save &Report...", "", "Ctrl+R"},
    {"mnuFileSaveReportPdf", "mnuFile", 0, "Save Report as PD&F...", "", "Ctrl+Shift+R"},
    Separator("mnuFileSep2", "mnuFile"),
    {"mnuFilePrint", "mnuFile", 55, "", "print", "Ctrl+P"},
    {"mnuFilePrintSetup", "mnuFile", 56, "", "", ""},
    Separator("mnuFileSep3", "mnuFile"),
    {"mnuFileSendMail", "mnuFileSend", 58, "", "", ""},
    {"mnuFileRecover", "mnuFile", 0, "Reco&ver...", "", ""},
    {"mnuFileImport", "mnuFile", 0, "&Import Loads...", "", "Ctrl+I"},
    Separator("mnuFileSep4", "mnuFile"),
    {"mnuFileMRU0", "mnuFile", 0, "", "", ""},
    {"mnuFileMRU1", "mnuFile", 0, "", "", ""},
    {"mnuFileMRU2", "mnuFile", 0, "", "", ""},
    {"mnuFileMRU3", "mnuFile", 0, "", "", ""},
    Separator("mnuFileSep5", "mnuFile"),
    {"mnuFileExit", "mnuFile", 59, "", "", "Ctrl+Q"},
    {"mnuEditCut", "mnuEdit", 71, "", "cut", ""},
    {"mnuEditCopy", "mnuEdit", 72, "", "copy", ""},
    {"mnuEditPaste", "mnuEdit", 73, "", "paste", ""},
    Separator("mnuEditSep1", "mnuEdit"),
    {"mnuEditUndo", "mnuEdit", 0, "&Undo", "", "Ctrl+Z"},
    {"mnuEditRedo", "mnuEdit", 0, "&Redo", "", "Ctrl+Shift+Z; Ctrl+Y"},
    Separator("mnuEditSep2", "mnuEdit"),
    {"mnuEditCutLoads", "mnuEdit", 0, "Cut &Step or Load", "", "Ctrl+X"},
    {"mnuEditCopyLoads", "mnuEdit", 0, "Copy Step &or Load", "", "Ctrl+C"},
    {"mnuEditPasteLoads", "mnuEdit", 0, "Paste Steps or &Loads", "", "Ctrl+V"},
    {"mnuEditDuplicate", "mnuEdit", 0, "&Duplicate Step or Load", "", "Ctrl+D"},
    Separator("mnuEditSep3", "mnuEdit"),
    {"mnuEditFind", "mnuEdit", 0, "&Find Step or Load...", "", "Ctrl+F"},
    {"mnuEditFindNext", "mnuEdit", 0, "Find Ne&xt", "", "F3"},
    {"mnuEditFindPrevious", "mnuEdit", 0, "Find Pre&vious", "", "Shift+F3"},
    {"mnuToolsDefaults", "mnuTools", 76, "", "", ""},
    {"mnuToolsOptions", "mnuTools", 77, "", "", ""},
    {"mnuToolsAnalysis", "mnuTools", 0, "&Analysis", "", "F7"},
    {"mnuHelpTopics", "mnuHelp", 86, "", "help", ""},
    {"mnuHelpWebSite1", "mnuHelpWeb", 0, "", "", ""},
    {"mnuHelpWebSite2", "mnuHelpWeb", 0, "", "", ""},
    Separator("mnuHelpSep1", "mnuHelp"),
    {"mnuHelpAbout", "mnuHelp", 89, "", "", ""},
    // Shown nowhere: the help's contents by its key.
    {"helpContents", "", 0, "", "", "F1"},
}};

/// A button of the toolbar; its tool tip is a string of the table.
struct ToolButton {
    const char* key;
    std::int32_t tip;
    const char* picture;
    bool gap;  ///< whether a gap stands before it
};

inline constexpr std::array<ToolButton, 9> kToolButtons{{{"butNew", 100, "new", false},
                                                         {"butOpen", 101, "open", false},
                                                         {"butSave", 102, "save", false},
                                                         {"butPrint", 103, "print", true},
                                                         {"butExport", 104, "export", false},
                                                         {"butCut", 105, "cut", true},
                                                         {"butCopy", 106, "copy", false},
                                                         {"butPaste", 107, "paste", false},
                                                         {"butHelp", 108, "help", true}}};

/// An item of the side bar: its value is the panel's index.
struct BarEntry {
    const char* key;
    std::int32_t title;
    const char* picture;
    const char* shortcut;
};

inline constexpr std::array<BarEntry, 4> kBarEntries{{{"Project", 125, "project", "Ctrl+1"},
                                                      {"PowerSystem", 126, "powersystem", "Ctrl+2"},
                                                      {"LoadProfile", 127, "loadprofile", "Ctrl+3"},
                                                      {"Recommend", 128, "recommend", "Ctrl+4"}}};

}  // namespace genvara
