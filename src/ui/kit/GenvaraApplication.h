#pragma once

#include <QApplication>

namespace genvara {

/// The program's event loop: it checks the field at hand before a click goes elsewhere, and hands failures
/// that pass the top of an event routine to the last-chance handler.
class GenvaraApplication : public QApplication {
    Q_OBJECT

  public:
    GenvaraApplication(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;
};

}  // namespace genvara
