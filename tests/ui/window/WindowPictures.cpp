// Pictures of every window, for people to look at: the folder is named by GENVARA_PICTURES.

#include <QComboBox>
#include <QDir>
#include <QPixmap>
#include <QTabWidget>
#include <QTreeWidget>

#include "EntryField.h"
#include "PictureTest.h"

namespace genvara {
namespace {

class WindowPictures : public PictureTest {
  protected:
    void Shoot(const char* command, const QString& name) {
        InNextDialog([this, name](QDialog& dialog) { Save(dialog, name); });
        Run(command);
    }
};

TEST_F(WindowPictures, OfThePanels) {
    Window().resize(1100, 720);
    Save(Window(), "panel-project-empty");
    Bar(2);
    Save(Window(), "panel-profile-empty");
    Open(Sample("hospital.prj"));
    Save(Window(), "panel-project");
    Bar(1);
    Save(Window(), "panel-site");
    auto& altitude = Control<EntryField>("panPwrSys", "txtAltitude");
    altitude.ShowError("Invalid altitude entered");
    Save(Window(), "panel-site-error");
    altitude.ClearError();
    Bar(2);
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    tree.setCurrentItem(tree.topLevelItem(0)->child(0));
    Save(Window(), "panel-profile");
    Bar(3);
    Save(Window(), "panel-recommend");
    Click(Window(), "chkRejectedGensets");
    Save(Window(), "panel-undersized");
    Window().resize(640, 480);
    Save(Window(), "panel-recommend-small");
    Bar(1);
    Save(Window(), "panel-site-small");
}

TEST_F(WindowPictures, OfTheDialogs) {
    Open(Sample("hospital.prj"));
    Shoot("mnuToolsOptions", "dialog-options");
    Shoot("mnuToolsDefaults", "dialog-defaults");
    InNextDialog([this](QDialog& dialog) {
        Find<QTabWidget>(dialog, "tabDefaults").setCurrentIndex(1);
        Save(dialog, "dialog-defaults-site");
    });
    Run("mnuToolsDefaults");
    Shoot("mnuHelpAbout", "dialog-about");
    Bar(2);
    InNextDialog([this](QDialog& dialog) { Save(dialog, "dialog-add-step"); });
    Click(Window(), "cmdAddStep");
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    tree.setCurrentItem(tree.topLevelItem(0));
    InNextDialog([this](QDialog& dialog) { Save(dialog, "dialog-edit-step"); });
    Click(Window(), "cmdEdit");
    InNextDialog([this](QDialog& dialog) { Save(dialog, "dialog-add-load"); });
    Click(Window(), "cmdAddLoad");
    const auto shootImport = [this](const char* name, const QString& table) {
        InNextDialog([this, name](QDialog& dialog) {
            dialog.resize(770, 470);
            Save(dialog, name);
        });
        Window().PasteTable(table);
    };
    const QString good =
        "Step\tType\tName\tQty\tkW\tHP\tStart\n1\tLighting\tCorridors\t1\t12.5\t\t\n"
        "2\tMisc\tWater heater\t3\t4.5\t\t\nLaundry\tMotor\tWasher\t2\t\t7.5\tWye-Delta\n"
        "Laundry\tMotor\tDryer fan\t2\t\t5\t\n";
    shootImport("dialog-import", good);
    shootImport("dialog-import-faults", good + "Laundry\tMotor\tPress\t1\t\t1200\tHand\n");
    frmSplash splash(App().ProgramFile("\\Resources\\GenvaraSplash.bmp"), nullptr);
    Save(splash, "splash");
}

}  // namespace
}  // namespace genvara
