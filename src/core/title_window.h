#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QWidget>

class QLineEdit;

namespace pw {

// The splash picture: the program's name and icon, and the version once it is printed.
class TitlePicture : public QWidget
{
    Q_OBJECT

public:
    explicit TitlePicture(QWidget *parent = nullptr);

    // The picture's size: 6300 by 3375 twips.
    static QSize pictureSize();
    // Where the version is printed: x = 100, y = 2950 twips, the top left of the text.
    static QPoint versionPosition();

    void setVersionPrinted(bool printed) { m_versionPrinted = printed; }
    bool versionPrinted() const { return m_versionPrinted; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_versionPrinted = false;
};

// The splash window: top-most, frameless, a picture and nothing else, shown while the main window
// loads. Text1 has no use here but is kept with the form.
class frmTitle : public QWidget
{
    Q_OBJECT

public:
    explicit frmTitle(QWidget *parent = nullptr);

    TitlePicture *Picture1 = nullptr;
    QLineEdit *Text1 = nullptr;

    // "Version: " and the version, as printed on the picture.
    static QString versionCaption();

    // Prints the version on the picture and paints it at once, so it shows before a long load;
    // every later paint prints it again.
    void PrintVersion();
};

// The start's calls. ShowTitle centres the one splash, shows it top-most without blocking and
// prints the version; PrintTitleVersion prints it again; UnloadTitle hides and deletes it. All are
// harmless when there is no splash.
frmTitle *ShowTitle();
frmTitle *TitleWindow();
void PrintTitleVersion();
void UnloadTitle();

} // namespace pw
