#pragma once

#include <string_view>

class QWidget;

/// How a dialog is driven without a mouse.
namespace genvara {

/// Lets Tab follow the layout: what stands first is reached first.
void OrderTabsByLayout(QWidget& dialog);

/// Gives every caption of the dialog that stands for a control a key of its own, as far as letters suffice.
/// Marks that captions have stay; OK and Cancel have Enter and Escape.
/// @param taken keys that the window around it has.
void MarkMnemonics(QWidget& dialog, std::string_view taken = {});

}  // namespace genvara
