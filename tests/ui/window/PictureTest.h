#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QPixmap>

#include "WindowFixture.h"

namespace genvara {

/// Takes pictures of windows for people to look at, into the folder that GENVARA_PICTURES names; skipped
/// without one.
class PictureTest : public WindowTest {
  protected:
    void SetUp() override {
        m_folder = qEnvironmentVariable("GENVARA_PICTURES");
        if (m_folder.isEmpty()) {
            GTEST_SKIP() << "set GENVARA_PICTURES to a folder";
        }
        QDir().mkpath(m_folder);
    }
    void Save(QWidget& widget, const QString& name) {
        QCoreApplication::processEvents();
        EXPECT_TRUE(widget.grab().save(m_folder + "/" + name + ".png"));
    }

  private:
    QString m_folder;
};

}  // namespace genvara
