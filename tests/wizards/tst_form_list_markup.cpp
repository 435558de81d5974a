#include "isolated_main.h"
#include "core/app_state.h"
#include "wizards/form_markup.h"
#include "wizards/list_markup.h"
#include "wizards/read_back.h"

using namespace pw;

Q_DECLARE_METATYPE(pw::FormElementOptions)
Q_DECLARE_METATYPE(pw::FormField)

// The Form and List Wizards' markup and checks, without a window.
class TestFormListMarkup : public QObject
{
    Q_OBJECT

    // Tag pieces as they stand, text pieces in brackets, so that a row shows what goes in which
    // font.
    static QString shown(const QList<MarkupPiece> &pieces)
    {
        QString out;
        for (const MarkupPiece &p : pieces)
            out += p.isTag ? p.text : QLatin1Char('[') + p.text + QLatin1Char(']');
        return out;
    }
    static FormElementOptions element(FormKind kind, std::function<void(FormElementOptions &)> fill = {})
    {
        FormElementOptions o;
        o.kind = kind;
        if (fill)
            fill(o);
        return o;
    }

private Q_SLOTS:
    void formMarkup_data()
    {
        QTest::addColumn<FormElementOptions>("options");
        QTest::addColumn<QString>("markup");
        QTest::addColumn<int>("caretBack");
        using O = FormElementOptions;
        QTest::newRow("text with only a name") << element(FormKind::Text, [](O &o) { o.name = "x"; })
                                               << "    <INPUT TYPE=\"TEXT\" NAME=\"x\" VALUE=\"\">\r\n" << 0;
        QTest::newRow("text with everything, quotes unescaped")
            << element(FormKind::Text, [](O &o) {
                   o.name = "q";
                   o.value = "say \"hi\" ";
                   o.size = "20";
                   o.maxLength = "40";
                   o.extraTag = "CLASS=big";
               })
            << "    <INPUT TYPE=\"TEXT\" NAME=\"q\" VALUE=\"say \"hi\" \" SIZE=\"20\" MAXLENGTH=\"40\" CLASS=big>\r\n" << 0;
        QTest::newRow("checkbox without text") << element(FormKind::Checkbox, [](O &o) {
            o.name = "a";
            o.value = "1";
            o.extraTag = "ID=c";
            o.checked = true;
        }) << "    <INPUT TYPE=\"CHECKBOX\" NAME=\"a\" VALUE=\"1\" ID=c CHECKED>[\r\n]" << 0;
        QTest::newRow("checkbox with text") << element(FormKind::Checkbox, [](O &o) {
            o.name = "agree";
            o.value = "yes";
            o.text = "I agree";
        }) << "    <INPUT TYPE=\"CHECKBOX\" NAME=\"agree\" VALUE=\"yes\">[I agree\r\n]" << 0;
        QTest::newRow("radio") << element(FormKind::Radio, [](O &o) {
            o.name = "size";
            o.value = "L";
            o.text = "Large";
            o.checked = true;
        }) << "    <INPUT TYPE=\"RADIO\" NAME=\"size\" VALUE=\"L\" CHECKED>[Large\r\n]" << 0;
        QTest::newRow("hidden") << element(FormKind::Hidden, [](O &o) {
            o.name = "id";
            o.value = "7";
            o.extraTag = "X";
        }) << "    <INPUT TYPE=\"HIDDEN\" NAME=\"id\" VALUE=\"7\" X>\r\n" << 0;
        QTest::newRow("password with a size") << element(FormKind::Password, [](O &o) {
            o.name = "pw";
            o.size = "8";
        }) << "    <INPUT TYPE=\"PASSWORD\" NAME=\"pw\" VALUE=\"\" SIZE=\"8\">\r\n" << 0;
        QTest::newRow("reset") << element(FormKind::Reset, [](O &o) { o.value = "Again"; })
                               << "    <INPUT TYPE=\"RESET\" VALUE=\"Again\">\r\n" << 0;
        QTest::newRow("submit") << element(FormKind::Submit, [](O &o) {
            o.value = "Send";
            o.extraTag = "NAME=go";
        }) << "    <INPUT TYPE=\"SUBMIT\" VALUE=\"Send\" NAME=go>\r\n" << 0;
        QTest::newRow("option") << element(FormKind::Option, [](O &o) {
            o.text = "Red";
            o.extraTag = "VALUE=r";
            o.checked = true;
        }) << "        <OPTION VALUE=r SELECTED>[Red\r\n]" << 0;
        QTest::newRow("option with nothing") << element(FormKind::Option) << "        <OPTION>[\r\n]" << 0;
        QTest::newRow("textarea as opened") << element(FormKind::Textarea, [](O &o) {
            o.name = "t";
            o.value = "one\r\ntwo";
            o.rows = "10";
            o.cols = "10";
        }) << "    <TEXTAREA NAME=\"t\" ROWS=\"10\" COLS=\"10\">\r\n[one\r\ntwo\r\n]</TEXTAREA>\r\n" << 0;
        QTest::newRow("textarea after a clear") << element(FormKind::Textarea, [](O &o) { o.name = "t"; })
                                                << "    <TEXTAREA NAME=\"t\">\r\n[\r\n]</TEXTAREA>\r\n" << 0;
        QTest::newRow("form posts by default") << element(FormKind::Form, [](O &o) { o.action = "/cgi-bin/order"; })
                                               << "<FORM ACTION=\"/cgi-bin/order\" METHOD=\"POST\">\r\n\r\n</FORM>" << 9;
        QTest::newRow("form with everything") << element(FormKind::Form, [](O &o) {
            o.action = "a";
            o.name = "n";
            o.encType = "text/plain";
            o.post = false;
            o.extraTag = "TARGET=x";
        }) << "<FORM ACTION=\"a\" NAME=\"n\" ENCTYPE=\"text/plain\" METHOD=\"GET\" TARGET=x>\r\n\r\n</FORM>" << 9;
        QTest::newRow("select with a cleared size and an empty list") << element(FormKind::Select, [](O &o) { o.name = "s"; })
            << "    <SELECT NAME=\"s\" SIZE=\"\">\r\n    </SELECT>\r\n" << 0;
        QTest::newRow("select with its entries") << element(FormKind::Select, [](O &o) {
            o.name = "colour";
            o.size = "1";
            o.multiple = true;
            o.entries = {"<OPTION>Red", "<OPTION SELECTED>Green > Blue", "<OPTION>"};
        }) << "    <SELECT NAME=\"colour\" SIZE=\"1\" MULTIPLE>\r\n"
              "        <OPTION>[Red\r\n]        <OPTION SELECTED>[Green > Blue\r\n]        <OPTION>[\r\n]"
              "    </SELECT>\r\n" << 0;
    }
    void formMarkup()
    {
        QFETCH(FormElementOptions, options);
        QFETCH(QString, markup);
        QFETCH(int, caretBack);
        const FormMarkup out = FormElementMarkup(options);
        QCOMPARE(shown(out.pieces), markup);
        QCOMPARE(out.caretBack, caretBack);
    }

    void requiredFields_data()
    {
        QTest::addColumn<FormElementOptions>("options");
        QTest::addColumn<FormField>("field");
        QTest::addColumn<QString>("message");
        using O = FormElementOptions;
        const QString name = "You must specify a Name!";
        const QString value = "You must specify a Value!";
        QTest::newRow("text without a name") << element(FormKind::Text, [](O &o) { o.value = "v"; }) << FormField::Name << name;
        QTest::newRow("name before value") << element(FormKind::Checkbox) << FormField::Name << name;
        QTest::newRow("radio without a value") << element(FormKind::Radio, [](O &o) { o.name = "r"; }) << FormField::Value << value;
        QTest::newRow("hidden without a value") << element(FormKind::Hidden, [](O &o) { o.name = "h"; }) << FormField::Value << value;
        QTest::newRow("password needs only a name") << element(FormKind::Password, [](O &o) { o.name = "p"; }) << FormField::None << QString();
        QTest::newRow("submit without a value") << element(FormKind::Submit, [](O &o) { o.name = "s"; }) << FormField::Value << value;
        QTest::newRow("reset without a value") << element(FormKind::Reset) << FormField::Value << value;
        QTest::newRow("form without an action") << element(FormKind::Form, [](O &o) { o.name = "f"; })
                                                << FormField::Action << "You must specify an Action!";
        QTest::newRow("option needs nothing") << element(FormKind::Option) << FormField::None << QString();
        QTest::newRow("select with no entries") << element(FormKind::Select, [](O &o) { o.name = "s"; }) << FormField::None << QString();
        QTest::newRow("textarea without a name") << element(FormKind::Textarea) << FormField::Name << name;
    }
    void requiredFields()
    {
        QFETCH(FormElementOptions, options);
        QFETCH(FormField, field);
        QFETCH(QString, message);
        const FormFault fault = CheckFormElement(options);
        QCOMPARE(fault.field, field);
        QCOMPARE(fault.message, message);
    }

    void selectEntries()
    {
        QCOMPARE(SelectOptionEntry(QStringLiteral(" Red  "), true), QStringLiteral("<OPTION SELECTED> Red"));
        QCOMPARE(SelectOptionEntry(QStringLiteral("Blue ") + QChar(0), false), QStringLiteral("<OPTION>Blue"));
        QCOMPARE(SelectOptionEntry(QString(), false), QStringLiteral("<OPTION>"));
        QVERIFY(IsSelectedOptionEntry(QStringLiteral("<OPTION SELECTED>Red")));
        QVERIFY(!IsSelectedOptionEntry(QStringLiteral("<OPTION>selected>")));
    }

    // Entries are "text", or "term|definition" on the Definition tab.
    void listMarkup_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("compact");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("markup");
        const int ol = int(ListKind::Ordered), ul = int(ListKind::Unordered), menu = int(ListKind::Menu),
                  dl = int(ListKind::Definition);
        QTest::newRow("start 3, type a") << ol << "3" << 2 << false << QStringList{"one", "two"}
                                         << "<OL START=\"3\" TYPE=\"a\">\r\n    <LI>[one\r\n]    <LI>[two\r\n]</OL>\r\n";
        QTest::newRow("start as typed") << ol << "2.5 " << 0 << false << QStringList{"x"}
                                        << "<OL START=\"2.5 \">\r\n    <LI>[x\r\n]</OL>\r\n";
        QTest::newRow("blank start") << ol << "   " << 1 << false << QStringList{"x"} << "<OL TYPE=\"A\">\r\n    <LI>[x\r\n]</OL>\r\n";
        QTest::newRow("roman") << ol << "" << 3 << false << QStringList{"x"} << "<OL TYPE=\"I\">\r\n    <LI>[x\r\n]</OL>\r\n";
        QTest::newRow("small roman") << ol << "" << 4 << false << QStringList{"x"} << "<OL TYPE=\"i\">\r\n    <LI>[x\r\n]</OL>\r\n";
        QTest::newRow("ordered empty") << ol << "" << 0 << false << QStringList{} << "<OL>\r\n[\r\n]</OL>\r\n";
        QTest::newRow("unordered default, trailing blanks kept") << ul << "" << 0 << false << QStringList{"a  "}
                                                                  << "<UL>\r\n    <LI>[a  \r\n]</UL>\r\n";
        QTest::newRow("disc") << ul << "" << 1 << false << QStringList{"a"} << "<UL TYPE=\"disc\">\r\n    <LI>[a\r\n]</UL>\r\n";
        QTest::newRow("circle") << ul << "" << 2 << false << QStringList{"a"} << "<UL TYPE=\"circle\">\r\n    <LI>[a\r\n]</UL>\r\n";
        QTest::newRow("square") << ul << "" << 3 << false << QStringList{"a"} << "<UL TYPE=\"square\">\r\n    <LI>[a\r\n]</UL>\r\n";
        QTest::newRow("menu") << menu << "" << 0 << false << QStringList{"Home", "Back"}
                              << "<MENU>\r\n    <LI>[Home\r\n]    <LI>[Back\r\n]</MENU>\r\n";
        QTest::newRow("menu empty") << menu << "" << 0 << false << QStringList{} << "<MENU>\r\n[\r\n]</MENU>\r\n";
        QTest::newRow("definition") << dl << "" << 0 << false << QStringList{"HTML|markup", "|"}
                                    << "<DL>\r\n    <DT>[HTML\r\n]        <DD>[markup\r\n]    <DT>[\r\n]        <DD>[\r\n]</DL>\r\n";
        QTest::newRow("definition compact") << dl << "" << 0 << true << QStringList{"a|b"}
                                            << "<DL COMPACT>\r\n    <DT>[a\r\n]        <DD>[b\r\n]</DL>\r\n";
        QTest::newRow("a second character 254") << dl << "" << 0 << false << QStringList{"x\u00FEy|d\u00FEe"}
                                                 << "<DL>\r\n    <DT>[x\u00FEy\r\n]        <DD>[d\u00FEe\r\n]</DL>\r\n";
        QTest::newRow("definition empty") << dl << "" << 0 << false << QStringList{} << "<DL>\r\n[\r\n]</DL>\r\n";
    }
    void listMarkup()
    {
        QFETCH(int, kind);
        QFETCH(QString, start);
        QFETCH(int, type);
        QFETCH(bool, compact);
        QFETCH(QStringList, entries);
        QFETCH(QString, markup);
        ListOptions o{ListKind(kind), start, type, compact, {}};
        for (const QString &entry : entries) {
            const qsizetype bar = entry.indexOf(QLatin1Char('|'));
            o.entries.append(bar < 0 ? ListEntry{entry, {}} : ListEntry{entry.left(bar), entry.mid(bar + 1)});
        }
        QCOMPARE(shown(ListPieces(o)), markup);
    }

    void listStart_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<bool>("accepted");
        for (const char *yes : {"", "   ", "3", "2.5", " 03 "})
            QTest::newRow(qPrintable(QStringLiteral("'%1'").arg(QLatin1String(yes)))) << yes << true;
        for (const char *no : {"x", "3a", "1e3"})
            QTest::newRow(no) << no << false;
    }
    void listStart()
    {
        QFETCH(QString, start);
        QFETCH(bool, accepted);
        QCOMPARE(ListStartAccepted(start), accepted);
    }

    void definitionShownJoined()
    {
        QCOMPARE(JoinedDefinition({QStringLiteral("term"), QStringLiteral("what it means")}),
                 QStringLiteral("term\u00FEwhat it means"));
    }

    // Text with "^" for the caret; the stretch a found construct covers and what placing its
    // options again writes, or "none".
    void readBack_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stretch");
        QTest::addColumn<QString>("placed");
        const QString ol = "<OL START=\"3\" TYPE=\"a\">\r\n    <LI>one\r\n    <LI>two  \r\n</OL>\r\n";
        QTest::newRow("a placed list") << "<P>\r\n" + QString(ol).replace("one", "o^ne") + "<P>" << ol << ol;
        QTest::newRow("caret on the start tag's name") << "<O^L>\r\n    <LI>a\r\n</OL>" << "<OL>\r\n    <LI>a\r\n</OL>"
                                                       << "<OL>\r\n    <LI>a\r\n</OL>\r\n";
        QTest::newRow("caret in front of the list") << "^<UL>\r\n    <LI>a\r\n</UL>" << "none" << "none";
        const QString inner = "<OL>\r\n    <LI>b\r\n</OL>\r\n";
        QTest::newRow("the innermost of two") << "<UL>\r\n    <LI>a\r\n<OL>\r\n    <LI>^b\r\n</OL>\r\n</UL>\r\n" << inner << inner;
        const QString outer = "<UL>\r\n    <LI>a\r\n<OL>\r\n    <LI>b\r\n</OL>\r\n</UL>\r\n";
        QTest::newRow("a list inside an entry stays its text") << QString(outer).replace("<LI>a", "<LI>^a") << outer << outer;
        QTest::newRow("lower case, compact") << "<dl compact>\r\n<dt>te^rm\r\n<dd>means\r\n</dl>"
                                             << "<dl compact>\r\n<dt>term\r\n<dd>means\r\n</dl>"
                                             << "<DL COMPACT>\r\n    <DT>term\r\n        <DD>means\r\n</DL>\r\n";
        QTest::newRow("a definition without a term") << "<DL>\r\n<DD>^x\r\n</DL>\r\n" << "<DL>\r\n<DD>x\r\n</DL>\r\n"
                                                     << "<DL>\r\n    <DT>\r\n        <DD>x\r\n</DL>\r\n";
        QTest::newRow("an empty menu") << "<MENU>\r\n^\r\n</MENU>\r\n" << "<MENU>\r\n\r\n</MENU>\r\n" << "<MENU>\r\n\r\n</MENU>\r\n";
        QTest::newRow("indented, type in capitals") << "<P>\r\n  <UL TYPE=DISC>\r\n  <LI>^x</LI>\r\n  </UL>\r\n"
                                                     << "  <UL TYPE=DISC>\r\n  <LI>x</LI>\r\n  </UL>\r\n"
                                                     << "<UL TYPE=\"disc\">\r\n    <LI>x</LI>\r\n</UL>\r\n";
        QTest::newRow("an attribute with no field") << "<OL CLASS=x>\r\n<LI>^a\r\n</OL>" << "none" << "none";
        QTest::newRow("a type not offered") << "<OL TYPE=\"x\">\r\n<LI>^a\r\n</OL>" << "none" << "none";
        QTest::newRow("text before the first entry") << "<UL>\r\nintro ^\r\n<LI>a\r\n</UL>" << "none" << "none";
        QTest::newRow("an entry tag with attributes") << "<OL>\r\n<LI VALUE=3>^a\r\n</OL>" << "none" << "none";
        QTest::newRow("no end tag") << "<OL>\r\n<LI>^a\r\n" << "none" << "none";
        const QString select = "    <SELECT NAME=\"c\" SIZE=\"1\" MULTIPLE>\r\n        <OPTION>Red\r\n"
                               "        <OPTION SELECTED>Green\r\n    </SELECT>\r\n";
        QTest::newRow("a placed select") << QString(select).replace("Green", "Gr^een") << select << select;
        QTest::newRow("options as written") << "<select name=x><option value=1>One</option><option>T^wo</select>"
                                            << "<select name=x><option value=1>One</option><option>Two</select>"
                                            << "    <SELECT NAME=\"x\" SIZE=\"\">\r\n        <option value=1>One</option>\r\n"
                                               "        <option>Two\r\n    </SELECT>\r\n";
        QTest::newRow("a select attribute with no field") << "<SELECT NAME=a ID=b>^</SELECT>" << "none" << "none";
    }
    void readBack()
    {
        QFETCH(QString, text);
        QFETCH(QString, stretch);
        QFETCH(QString, placed);
        const int caret = int(text.indexOf(QLatin1Char('^')));
        text.remove(caret, 1);
        QString foundStretch = QStringLiteral("none");
        QString foundPlaced = QStringLiteral("none");
        if (text.contains(QLatin1String("ELECT"), Qt::CaseInsensitive)) {
            if (const auto found = SelectAround(text, caret)) {
                foundStretch = text.mid(found->from, found->length);
                foundPlaced.clear();
                for (const MarkupPiece &p : FormElementMarkup(found->options).pieces)
                    foundPlaced += p.text;
            }
        } else if (const auto found = ListAround(text, caret)) {
            foundStretch = text.mid(found->from, found->length);
            foundPlaced.clear();
            for (const MarkupPiece &p : ListPieces(found->options))
                foundPlaced += p.text;
        }
        QCOMPARE(foundStretch, stretch);
        QCOMPARE(foundPlaced, placed);
    }
};

PW_TEST_MAIN(TestFormListMarkup)
#include "tst_form_list_markup.moc"
