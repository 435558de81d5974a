#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

namespace pw {

// The product's home page, shown in the about box.
inline constexpr char HomePageAddress[] = "https://pagewright.example.org/";

// The about box: the product and its version, and the home page, which a click opens in the browser
// of History.Browser.
class frmTitle2 : public QDialog
{
    Q_OBJECT

public:
    explicit frmTitle2(QWidget *parent = nullptr);

    QLabel *Image1 = nullptr;
    QLabel *Label1 = nullptr;
    QLabel *Label3 = nullptr;
    QLabel *Label6 = nullptr;
    QPushButton *Command1 = nullptr;

    void Label6_Click();
    void Command1_Click();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

// Shows the one about box, centred and application-modal, without blocking the caller; it is deleted
// when it closes.
frmTitle2 *ShowAboutBox();

} // namespace pw
