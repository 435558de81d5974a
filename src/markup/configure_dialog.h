#pragma once

#include <QDialog>

class QGroupBox;
class QPushButton;

namespace pw {

class EditingSurface;
class Workspace;
struct FontClass;

// "Configure Editor": the fonts and colours of the three character classes and the documents'
// background, tried on a coloured sample. A choice goes straight into the workspace's classes;
// OK carries what changed to every open document (caret and Dirty kept), Cancel reads the three
// classes back from the settings (not the background). Since a document's characters follow the
// class fonts, Cancel also takes back what an earlier OK of the same run showed in them.
class frmConfigure : public QDialog
{
    Q_OBJECT

public:
    frmConfigure(Workspace &workspace, QWidget *parent = nullptr);

    QGroupBox *Frame2 = nullptr; // "Change Font for:"
    QPushButton *Command2 = nullptr, *Command4 = nullptr, *Command9 = nullptr;
    QGroupBox *Frame1 = nullptr; // "Change Color for:"
    QPushButton *Command5 = nullptr, *Command6 = nullptr, *Command8 = nullptr;
    QPushButton *Command3 = nullptr; // background
    QPushButton *Command1 = nullptr; // OK
    QPushButton *Command7 = nullptr; // Cancel
    EditingSurface *Text = nullptr;
    // The marks of what changed: "CH" tags, "CT" text, "CO" comments, "CB" background.
    QString Tag;

protected:
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    enum class Class { Html, Text, Comment };
    void Form_Load();
    void chooseFont(Class which);
    void chooseColor(Class which);
    void Command3_Click();
    void Command1_Click();
    void Command7_Click();
    void refreshSample(Class which);
    void Form_Unload();
    FontClass &fontOf(Class which);

    Workspace &m_workspace;
    bool m_unloaded = false;
};

// mnuOptionFontColor: the dialog, centred and modal (without a loop of its own).
frmConfigure *ShowConfigure(Workspace &workspace, QWidget *parent);

} // namespace pw
