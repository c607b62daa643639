// File > Import Loads, and tables that are pasted.

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QStatusBar>
#include <QTableView>
#include <QTest>

#include "FieldError.h"
#include "FrozenTable.h"
#include "Globals.h"
#include "ImportPreview.h"
#include "ProfileFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class ImportInTheWindow : public ProfileTest {
  protected:
    /// Opens the preview of a text, as a table that is pasted.
    void Paste(const QString& text, const std::function<void(QDialog&)>& act) {
        bool shown = false;
        InNextDialog([&](QDialog& dialog) {
            shown = true;
            act(dialog);
        });
        Window().PasteTable(text);
        EXPECT_TRUE(shown);
    }
    void ImportAll(const QString& text) {
        Paste(text, [](QDialog& dialog) { Click(dialog, "cmdImport"); });
    }
    static QAbstractItemModel& Model(QDialog& dialog) {
        return *Find<QTableView>(dialog, "tblPreview").model();
    }
    static std::string CellText(QDialog& dialog, int row, int column) {
        return Model(dialog).index(row, column).data().toString().toStdString();
    }
    static std::string Summary(QDialog& dialog) {
        return Find<QLabel>(dialog, "lblSummary").text().toStdString();
    }
    static bool CanImport(QDialog& dialog) { return Find<QPushButton>(dialog, "cmdImport").isEnabled(); }
};

TEST_F(ImportInTheWindow, ThePreviewShowsWhatEachRowBecomes) {
    AddStep("Lights");
    Paste("Step\tType\tName\tQty\tkW\tpF\n1\tMisc\tHeater\t3\t12.5\t0.8\nRoof\tUPS\t\t\t\t\n",
          [](QDialog& dialog) {
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Result), "OK");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Step), "1  Lights");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Type), "Misc. Linear Load");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Name), "Heater");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Quantity), "3");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::RunningKW), "37.50");   // 3 x 12.5
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::RunningKVA), "46.88");  // / 0.8
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::StartingKW), "37.50");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::StartingKVA), "46.88");
              // Behind them the cells that are shown nowhere else.
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Own), "12.5");
              EXPECT_EQ(CellText(dialog, 0, ImportPreview::Own + 1), "0.8");
              EXPECT_EQ(Model(dialog).columnCount(), ImportPreview::Own + 2);
              EXPECT_EQ(Model(dialog).headerData(ImportPreview::Own, Qt::Horizontal).toString(), "kW");
              EXPECT_EQ(Model(dialog).headerData(1, Qt::Vertical).toInt(), 3);
              EXPECT_EQ(CellText(dialog, 1, ImportPreview::Step), "2  Roof");
          });
    EXPECT_THAT(Stored(), ElementsAre("Lights:"));
}

TEST_F(ImportInTheWindow, AFaultIsToldByWordAndGroundBesideItsCell) {
    Paste("Type,Name,kW,HP\nMisc,a,5,\nMisc,b,3000,7\n", [](QDialog& dialog) {
        EXPECT_FALSE(CanImport(dialog));
        EXPECT_EQ(Summary(dialog), "2 faults in 1 row of 2: nothing is imported until all is right.");
        const QModelIndex cell = Model(dialog).index(1, ImportPreview::Own);
        EXPECT_EQ(cell.data().toString(), "Fault: 3000");
        EXPECT_EQ(cell.data(Qt::BackgroundRole).value<QColor>(), FieldError::kGround);
        EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), "kW: 3000 is out of range. Enter 0 to 2000 kW.");
        EXPECT_EQ(cell.data(Qt::AccessibleDescriptionRole), cell.data(Qt::ToolTipRole));
        EXPECT_EQ(CellText(dialog, 1, ImportPreview::Result), "2 faults");
        EXPECT_EQ(CellText(dialog, 1, ImportPreview::Name), "b") << "as it was typed";
        EXPECT_FALSE(Model(dialog).index(0, ImportPreview::Own).data(Qt::BackgroundRole).isValid());
        auto& list = Find<QListWidget>(dialog, "lstFaults");
        ASSERT_EQ(list.count(), 2);
        EXPECT_EQ(list.item(0)->text(), "Row 3, column 3: kW: 3000 is out of range. Enter 0 to 2000 kW.");
        // An entry of the list leads to its cell.
        list.setCurrentRow(1);
        EXPECT_EQ(Find<QTableView>(dialog, "tblPreview").currentIndex(),
                  Model(dialog).index(1, ImportPreview::Own + 1));
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_THAT(Stored(), IsEmpty());
}

TEST_F(ImportInTheWindow, WhoseRowItIsStaysInViewSideways) {
    QString wide = "Type,Name,kW";
    QString row = "\nMisc,Sockets of the second floor,3000";
    for (int column = 0; column < 20; ++column) {
        wide += QString(",Column %1 of the table").arg(column);
        row += ",x";
    }
    Paste(wide + row + row + "\n", [](QDialog& dialog) {
        auto& table = Find<FrozenTable>(dialog, "tblPreview");
        dialog.resize(1100, 500);
        QCoreApplication::processEvents();
        table.horizontalScrollBar()->setValue(0);
        EXPECT_EQ(table.Covered(), 0) << "nothing is scrolled away";
        table.horizontalScrollBar()->setValue(400);
        const int name = table.columnWidth(ImportPreview::Name);
        EXPECT_EQ(table.Covered(), table.columnWidth(0) + table.columnWidth(1) + table.columnWidth(2) + name);
        auto& front = Find<QTableView>(table, "tblFront");
        EXPECT_EQ(front.rowHeight(1), table.rowHeight(1));
        EXPECT_EQ(front.columnViewportPosition(ImportPreview::Name) + name, table.Covered());
        EXPECT_EQ(front.mapTo(&table, QPoint(0, 0)).x(), table.viewport()->x());
        // What is chosen is seen beside them, also from the right.
        table.setCurrentIndex(table.model()->index(1, table.model()->columnCount() - 1));
        table.setCurrentIndex(table.model()->index(1, ImportPreview::Own));
        EXPECT_GE(table.visualRect(table.currentIndex()).left(), table.Covered());
        dialog.resize(table.Covered() + 120, 500);
        QCoreApplication::processEvents();
        EXPECT_EQ(table.Covered(), 0) << "there is no room beside them";
    });
}

TEST_F(ImportInTheWindow, ATableAsAWholeIsRefusedInOneSentence) {
    Paste("Name,kW\nfan,3\n", [](QDialog& dialog) {
        EXPECT_FALSE(CanImport(dialog));
        EXPECT_THAT(Summary(dialog), HasSubstr("No column tells the type of the loads."));
        EXPECT_EQ(Model(dialog).rowCount(), 0);
    });
}

TEST_F(ImportInTheWindow, ATextThatIsNoTableOfLoadsOpensNothing) {
    for (const char* text : {"", " \n\t", "hello", "Pump\t12\nFan\t3\n"}) {
        Window().statusBar()->clearMessage();
        Window().PasteTable(text);
        EXPECT_EQ(Window().statusBar()->currentMessage(), "The clipboard holds no loads.") << text;
    }
}

TEST_F(ImportInTheWindow, AColumnWithoutAMeaningIsNoted) {
    Paste("Type,kW,Room\nMisc,5,12\n", [](QDialog& dialog) {
        EXPECT_TRUE(CanImport(dialog));
        EXPECT_EQ(Find<QListWidget>(dialog, "lstFaults").item(0)->text(),
                  "Note: The column \"Room\" means nothing here and is passed over.");
    });
}

TEST_F(ImportInTheWindow, AnImportIsOneChangeThatIsTakenBackAndMadeAgain) {
    AddStep("Lights");
    AddLoad(1, "lamp");
    Window().ChangeProject("Begin", [] {});
    g_ProjectDirty = false;
    Bar(0);
    ImportAll("Step,Type,Name,kW\n1,Misc,first,1\nRoof,Misc,second,2\n1,Misc,third,3\n");
    const std::vector<std::string> after{"Lights: lamp first third", "Roof: second"};
    EXPECT_EQ(Stored(), after);
    EXPECT_EQ(Shown().size(), 2U);
    EXPECT_EQ(Tree().currentItem(), &Node(1, 3));
    EXPECT_EQ(ShownPanel(), "panLoadProfile");
    EXPECT_TRUE(g_ProjectDirty);
    EXPECT_THAT(Window().statusBar()->currentMessage().toStdString(), HasSubstr("Import 3 Loads"));
    EXPECT_EQ(App().Document().UndoName(), "Import 3 Loads");
    Run("mnuEditUndo");
    EXPECT_THAT(Stored(), ElementsAre("Lights: lamp"));
    EXPECT_THAT(Shown(), SizeIs(1));
    Run("mnuEditRedo");
    EXPECT_EQ(Stored(), after);
}

TEST_F(ImportInTheWindow, CancelLeavesTheProjectAsItIs) {
    Paste("Type,kW\nMisc,5\n", [](QDialog& dialog) {
        EXPECT_TRUE(CanImport(dialog));
        EXPECT_EQ(Summary(dialog), "1 load in order, with 1 new step.");
        Click(dialog, "cmdCancel");
    });
    EXPECT_THAT(Stored(), IsEmpty());
    EXPECT_FALSE(App().Document().UndoName().has_value());
}

TEST_F(ImportInTheWindow, ARowWithoutAStepGoesToTheSelectedOne) {
    AddStep("one");
    AddStep("two");
    Select(1);
    Paste("Type,Name,kW\nMisc,here,5\n", [](QDialog& dialog) {
        QApplication::setActiveWindow(&dialog);
        QTest::keyClick(&Find<QTableView>(dialog, "tblPreview"), Qt::Key_Return);  // the default button
    });
    EXPECT_THAT(Stored(), ElementsAre("one: here", "two:"));
}

TEST_F(ImportInTheWindow, AFileIsChosenByTheCommand) {
    WriteBytes(folder / "loads.csv", "Type;Name;kW\nMisc;K\xFChlung;1,5\n");
    platform.files = {(folder / "loads.csv").string()};
    InNextDialog([&](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), "frmImport");
        EXPECT_TRUE(CanImport(dialog));
        Click(dialog, "cmdImport");
    });
    Run("mnuFileImport");
    const auto asked = platform.Take();
    ASSERT_THAT(asked, SizeIs(1));
    EXPECT_EQ(asked[0].what, "open");
    EXPECT_EQ(asked[0].file.title, "Import Loads");
    EXPECT_THAT(Stored(), ElementsAre("Load Step #1: Kühlung"));
    EXPECT_EQ(Profile().LoadStep(1).begin()->RunningRealPower(), 1500);
}

TEST_F(ImportInTheWindow, WhatCannotBeReadIsToldInOneSentence) {
    platform.files = {(folder / "nowhere.csv").string()};
    Run("mnuFileImport");
    EXPECT_THAT(platform.Take().back().message.text, HasSubstr("The table cannot be imported: "));
    platform.files = {""};
    Run("mnuFileImport");
    EXPECT_THAT(platform.Take(), SizeIs(1)) << "a cancelled dialog says nothing";
}

TEST_F(ImportInTheWindow, TheTemplateFitsASample) {
    Open(Sample("office.prj"));
    platform.Take();
    platform.files = {Sample("loads-template.csv").string()};
    InNextDialog([&](QDialog& dialog) {
        EXPECT_EQ(Summary(dialog), "12 loads in order.");
        Click(dialog, "cmdImport");
    });
    Run("mnuFileImport");
    EXPECT_EQ(App().Document().UndoName(), "Import 12 Loads");
}

TEST_F(ImportInTheWindow, TenThousandRowsAreShownWithoutAWait) {
    QString text = "Step,Type,Name,HP\n";
    for (int row = 0; row < 10000; ++row) {
        text += QString("%1,Motor,M%2,%3\n").arg(1 + row / 250).arg(row).arg(1 + row % 400);
    }
    Paste(text, [](QDialog& dialog) {
        EXPECT_TRUE(CanImport(dialog));
        EXPECT_EQ(Model(dialog).rowCount(), 10000);
    });
    Paste(text + "1,Motor,one more,5\n", [](QDialog& dialog) {
        EXPECT_EQ(Summary(dialog), "The table has more than 10000 rows. Import it in parts.");
    });
}

}  // namespace
}  // namespace genvara
