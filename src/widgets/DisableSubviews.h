#pragma once

class QWidget;

// Disables (or enables again) every control below a view, leaving the view itself as it is.
void disableSubviews(QWidget *view, bool disable);
