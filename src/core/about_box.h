#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace pw {

class Workspace;

// The product's home page, shown in the about box.
inline constexpr char HomePageAddress[] = "https://pagewright.example.org/";

// The about box: the product and its version, and the home page, which a click opens in the browser
// of History.Browser.
class frmTitle2 : public QDialog
{
    Q_OBJECT

public:
    frmTitle2(Workspace &workspace, QWidget *parent);

    QLabel *Image1 = nullptr;
    QLabel *Label1 = nullptr;
    QLabel *Label3 = nullptr;
    QLabel *Label6 = nullptr;
    QPushButton *Command1 = nullptr;

    void Label6_Click();
    void Command1_Click();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Workspace &m_workspace;
};

// Shows the one about box over parent, centred and application-modal, without blocking the caller;
// it is deleted when it closes.
frmTitle2 *ShowAboutBox(Workspace &workspace, QWidget *parent);

} // namespace pw
