#pragma once

// Editing a box by the list or the button beside it, with the mouse or with a key.

#include "integration/wizard/wizard_overlays.h"

namespace metrify {

class WizardEditor {
  public:
    /// Dialog and overlays must outlive the editor.
    WizardEditor(const WizardDialog& dialog, const WizardOverlays& overlays);

    /// Loads the cursor; called once, after the hooks are installed.
    void LoadPointer();

    /// Opens the list or runs the dialog of a box.
    void Open(int box);

    /// The box whose list is open; -1 if none is.
    int OpenIndex() const { return open_index_; }
    /// Moves the open list to its box.
    void PlaceList();
    /// Writes the value of the selected item into the box.
    void TakeSelection();
    void CloseList();
    /// Called before the list is destroyed.
    void ForgetList() { open_index_ = -1; }

    void SetFocusedBox(int box) { focused_index_ = box; }
    /// Returns true if the key is handled and not for the host.
    bool HandleKey(WORD key);

  private:
    void OpenList(int box);
    void OpenButton(int box);
    bool HandleListKey(WORD key);
    bool IsBound(WORD key) const;

    const WizardDialog& dialog_;
    const WizardOverlays& overlays_;
    HCURSOR cursor_ = nullptr;
    int focused_index_ = -1;
    int open_index_ = -1;
};

} // namespace metrify
