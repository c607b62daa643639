#pragma once

#include <QDialog>
#include <functional>
#include <optional>
#include <vector>

#include "KeptWords.h"
#include "PlatformServices.h"

class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace genvara {

/// Shows projects that were kept, tells what is in each, and lets one be chosen to be restored.
class frmRecover final : public QDialog {
    Q_OBJECT

  public:
    using Teller = std::function<KeptWords(const KeptProject& kept)>;

    /// @param lost whether a program that did not end left them, or commands dropped them.
    /// @param tell reads a project, to tell of it.
    frmRecover(PlatformServices& platform, std::vector<KeptProject> kept, bool lost, const Teller& tell,
               QWidget* owner);

    /// What is to be restored, once the dialog was accepted.
    [[nodiscard]] std::optional<KeptProject> Chosen() const;

  private:
    void Build(bool lost);
    void FillList();
    void ShowChosen();
    void Discard();

    PlatformServices* m_platform;
    std::vector<KeptProject> m_kept;
    std::vector<KeptWords> m_words;
    QListWidget* m_lstKept;
    QPlainTextEdit* m_txtDetails;
    QPushButton* m_cmdRestore;
    QPushButton* m_cmdDiscard;
};

}  // namespace genvara
