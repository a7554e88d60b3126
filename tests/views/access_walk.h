// What a person without a mouse, or without sight, meets in a window. Each function answers a sentence for each thing
// that is wrong, so that an empty list is the good answer.
#pragma once

#include <QStringList>
#include <QWidget>

namespace sorvan::test {

// Interactive elements that assistive technology finds without a name or a role.
QStringList namelessElements(QWidget& part);

// Controls that neither Tab nor F6 nor arrow keys lead to, and controls that look the same with the keyboard on them.
// `part` is a window, or an overlay inside one that keeps the keyboard. Keys are pressed: values may change.
QStringList keyboardFaults(QWidget& part);

}  // namespace sorvan::test
