#pragma once

/// The texts of the program by their roles; the value is the number in the language files. A name begins
/// with the place where the text stands (Menu, Action, Title, Label, Tip, Header, Group, Button, Hint), with
/// Setting or Confirm where it stands at that field of TAppData, and with Ask where it is a question.
enum class Text : int {
    None = -1, ///< where there need not be a text
#define VM_TEXT(name, number, places) name = (number),
#include "base/texts.def"
};
