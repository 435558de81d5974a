#pragma once

#include <QObject>

#include <functional>

class QDialog;
class QPushButton;
class QString;
class QWidget;

namespace pw {

// What Find and Replace share: a tool window above the documents (not above other programs),
// centred and shown without modal state, in front and active.
void SetSearchDialogLook(QDialog &dialog);
void ShowSearchDialog(QDialog &dialog);
QPushButton *SearchButton(QWidget *parent, const char *name, const QString &caption);

// Runs lostFocus whenever a widget loses the focus (a box's _LostFocus).
class LostFocusWatch : public QObject
{
public:
    LostFocusWatch(QWidget *widget, std::function<void()> lostFocus);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    std::function<void()> m_lostFocus;
};

} // namespace pw
