#pragma once

class QDialog;
class QDialogButtonBox;
class QLabel;
class QString;
class QVBoxLayout;
class QWidget;

namespace desktop {

/// The column of a dialog, with the margins and distances that all dialogs have.
QVBoxLayout* addColumn(QDialog& dialog);

/// OK and Cancel at the foot of the column, in the window's language, tied to the dialog; OK is the default.
QDialogButtonBox* addOkCancel(QDialog& dialog, QVBoxLayout& column);

/// A line for why the dialog cannot be accepted yet; it keeps its height while it is empty.
QLabel* makeReason(QWidget* parent);

/// A hint in the colour of what is not in front.
QLabel* makeHint(const QString& text, QWidget* parent);

} // namespace desktop
