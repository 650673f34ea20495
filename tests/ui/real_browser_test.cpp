#include <gtest/gtest.h>
#include <signal.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPushButton>
#include <QtTest>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "tests/ui/support/driver.h"
#include "tests/ui/support/print_steps.h"
#include "tests/ui/support/web_server.h"
#include "ui/browser/browser_plugin.h"
#include "ui/shared/byte_text_box.h"

// The browser component itself, with pages on the disk and of a server on this machine.

namespace tessaril {
namespace {

constexpr int kPatience = 30000;  // milliseconds

// The processes below this one by their depth: the component's helpers are at 1, those that show pages at 2.
std::map<int, int> Processes() {
  std::map<int, int> parents;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const int id = std::atoi(entry.path().filename().c_str());
    std::ifstream stat(entry.path() / "stat");
    std::string text;
    if (id != 0 && std::getline(stat, text)) parents[id] = std::atoi(text.c_str() + text.rfind(')') + 4);
  }
  std::map<int, int> depths;
  for (const auto& [id, parent] : parents) {
    int depth = 0;
    int above = id;
    for (; above > 1 && above != getpid(); ++depth) above = parents.contains(above) ? parents.at(above) : 0;
    if (above == getpid() && depth > 0) depths[id] = depth;
  }
  return depths;
}

// Lets the event loop run until something is so. The component does a little each time round, so that a loop
// that rests in between would be slow.
template <class Condition>
bool WaitUntil(Condition condition) {
  QEventLoop loop;
  QTimer looks;
  QElapsedTimer waited;
  waited.start();
  bool is_so = condition();
  QObject::connect(&looks, &QTimer::timeout, &loop, [&] {
    is_so = condition();
    if (is_so || waited.elapsed() > kPatience) loop.quit();
  });
  looks.start(5);
  if (!is_so) loop.exec();
  return is_so;
}

void Rest(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

class RealBrowser : public testing::Test {
 protected:
  RealBrowser() {
    site.Write("first.htm", "<TITLE>First</TITLE><P>the first page <A HREF=second.htm#low>on</A>");
    site.Write("second.htm", "<TITLE>Second</TITLE><P>the second page<A NAME=low>");
    driver.emplace(site.path(), "", BrowserFromPlugin(PLUGIN_FOLDER));
    driver->ClickItem("filList", "first.htm", true);
    EXPECT_TRUE(Becomes("First"));
  }

  QString Text(const char* label) { return driver->Find<QLabel>(label)->accessibleName(); }
  QString Address() { return driver->Find<QComboBox>("cboAddress")->currentText(); }
  QString FileAddressOf(const std::string& name) { return QString::fromStdString("file://" + (site / name)); }

  // Types an address; to be followed by a look for what is shown.
  void Go(const QString& address) {
    auto* const box = driver->Find<QComboBox>("cboAddress");
    box->setEditText(address);
    QTest::keyClick(box, Qt::Key_Return);
  }

  template <class Condition>
  testing::AssertionResult Soon(Condition condition) {
    if (WaitUntil(condition)) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "shown: " << driver->Find("frmBrowser")->windowTitle().toStdString() << ", "
           << Address().toStdString() << ", " << Text("StatusBar1_2").toStdString();
  }

  // Whether a page of that title is shown, and nothing is being loaded any more.
  testing::AssertionResult Becomes(const QString& title) {
    return Soon([&] {
      return driver->Find("frmBrowser")->windowTitle() == title &&
             driver->Find("frmBrowser")->findChild<QWidget*>("Command1")->property("Tag") == "" &&
             Text("StatusBar1_3") == title;
    });
  }

  // The title that a script gives its page.
  testing::AssertionResult GoesTo(const QString& address, const QString& title) {
    Go(address);
    return Becomes(title);
  }

  void ClickPage() {
    QWidget* const page = driver->Find("brwWebBrowser");
    Rest(200);  // until the page takes input
    QTest::mouseClick(page->focusProxy() ? page->focusProxy() : page, Qt::LeftButton, {}, QPoint(60, 60));
  }

  ScratchFolder site;
  std::optional<Driver> driver;
};

TEST_F(RealBrowser, ShowsPagesPicturesAndDocuments) {
  WebServer server;
  server.answers["/far.htm"] = {"<TITLE>Far</TITLE><P>away"};
  server.answers["/bare.htm"] = {"no title"};
  site.Write("bare page.htm", "no title either");
  site.Write("\xE6.htm", "<TITLE>8-bit name</TITLE>");
  std::filesystem::copy_file(EXAMPLE_SITE "/images/paper.gif", site / "paper.gif");
  EXPECT_EQ(Address(), FileAddressOf("first.htm"));
  EXPECT_EQ(Text("StatusBar1_1"), "Got 100 %");
  EXPECT_EQ(Text("StatusBar1_2"), "Done");
  EXPECT_TRUE(GoesTo("second.htm", "Second"));
  driver->Press("tbToolBar_Back");
  EXPECT_TRUE(Becomes("First"));
  EXPECT_EQ(Address(), FileAddressOf("first.htm"));
  driver->Press("tbToolBar_Forward");
  EXPECT_TRUE(Becomes("Second"));
  site.Write("second.htm", "<TITLE>Changed</TITLE><P><A NAME=low>");
  driver->Press("tbToolBar_Refresh");
  EXPECT_TRUE(Becomes("Changed"));
  Go("second.htm#low");
  EXPECT_TRUE(Soon([&] { return Address() == FileAddressOf("second.htm#low"); }));
  EXPECT_TRUE(GoesTo(server / "far.htm", "Far"));
  EXPECT_TRUE(GoesTo(server / "bare.htm", server / "bare.htm"));
  EXPECT_TRUE(GoesTo("bare page.htm", FileAddressOf("bare%20page.htm")));
  EXPECT_TRUE(GoesTo(FileAddressOf("bare%20page.htm#x"), FileAddressOf("bare%20page.htm#x")));
  EXPECT_TRUE(GoesTo("first.htm", "First"));
  EXPECT_TRUE(GoesTo(FileAddressOf("%E6.htm"), "8-bit name"));
  Go("paper.gif");
  EXPECT_TRUE(Soon([&] { return driver->Find("frmBrowser")->windowTitle().startsWith("paper.gif ("); }));
  driver->Press("tbToolBar_Home");
  EXPECT_TRUE(Becomes("Tessaril: pages of your site"));
  Go(FileAddressOf("gone.htm"));
  EXPECT_TRUE(
      Soon([&] { return Text("StatusBar1_2").startsWith("Not opened: " + FileAddressOf("gone.htm")); }));
  EXPECT_EQ(driver->Find("Command1")->property("Tag"), "");
}

TEST_F(RealBrowser, ShowsAFileThatChangedAnew) {
  driver->Press("Reset");
  site.Write("first.htm", "<TITLE>Mended</TITLE>");
  driver->ClickItem("filList", "first.htm");
  EXPECT_TRUE(Becomes("Mended"));
}

TEST_F(RealBrowser, ShowsWhatTheEditorHolds) {
  const auto edit_html = [&] {
    QTest::mouseClick(driver->Find("frmBrowser")->findChild<QWidget*>("Command1"), Qt::LeftButton);
    driver->Activate();
    return driver->Find<ByteTextBox>("EditTekst");
  };
  for (const QString title : {"Edited", "Edited again"}) {
    Driver::TypeInto(*edit_html(), "<TITLE>" + title + "</TITLE>");
    driver->Press("Command2");
    EXPECT_TRUE(Becomes(title));
    EXPECT_EQ(Address(), FileAddressOf("~temp.htm"));
  }
  EXPECT_TRUE(GoesTo("second.htm", "Second"));
  EXPECT_TRUE(edit_html()->Bytes().ends_with("the first page <A HREF=second.htm#low>on</A>"));
  driver->Press("Gem");
  driver->Press("Command2");
  EXPECT_TRUE(Becomes("Edited again"));
  EXPECT_EQ(Address(), FileAddressOf("first.htm"));
}

TEST_F(RealBrowser, EndsWhenAPageBeingPrintedIsDone) {
  for (const int wait : {0, 5}) {
    const std::string out = site / std::to_string(wait) + ".pdf";
    driver->on_dialog = [&](QWidget& dialog) {
      dialog.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(out));
      PressPrint(static_cast<QPrintDialog&>(dialog), 1);
    };
    driver->Press("PrintWB");
    if (wait > 0) Rest(wait);
    driver.reset();
    EXPECT_TRUE(std::filesystem::exists(out));
    driver.emplace(site.path(), "", BrowserFromPlugin(PLUGIN_FOLDER));
    driver->ClickItem("filList", "first.htm", true);
    EXPECT_TRUE(Becomes("First"));
  }
}

TEST_F(RealBrowser, StopsWhatNeverEnds) {
  WebServer server;
  Go(server / "never");
  EXPECT_TRUE(Soon([&] { return !server.asked.empty(); }));
  EXPECT_EQ(driver->Find("Command1")->property("Tag"), "0");
  EXPECT_TRUE(Soon([&] { return driver->Find("frmBrowser")->windowTitle() == "Working..."; }));
  driver->Press("tbToolBar_Stop");
  EXPECT_TRUE(Becomes("First"));
  EXPECT_EQ(Address(), FileAddressOf("first.htm"));
  Go(server / "never");
  driver->Press("Reset");  // while it loads; and so is the end of the program
  EXPECT_TRUE(driver->IsShown("Picture1"));
}

TEST_F(RealBrowser, PrintsPagesAndDocuments) {
  std::string out = site / "page.pdf";
  driver->on_dialog = [&](QWidget& dialog) {
    auto* const print = qobject_cast<QPrintDialog*>(&dialog);
    ASSERT_NE(print, nullptr);
    dialog.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(out));
    PressPrint(*print, 1);
  };
  const auto print = [&] {
    driver->Press("PrintWB");
    EXPECT_TRUE(Soon([&] { return Text("StatusBar1_2") == "Printed"; }));
    return Ask("pdftotext", {QString::fromStdString(out), "-"}).simplified();
  };
  EXPECT_EQ(print(), "the first page on");
  std::filesystem::rename(out, site / "\xE6.pdf");
  Go(FileAddressOf("%E6.pdf"));
  EXPECT_TRUE(Becomes(FileAddressOf("%E6.pdf")));
  out = site / "again.pdf";
  EXPECT_EQ(print(), "the first page on");
}

// A page of the disk shows what belongs to it; its scripts read nothing of that, nor any other file.
TEST_F(RealBrowser, KeepsPagesFromTheUsersFiles) {
  WebServer server;
  site.Write("secret.txt", "secret");
  site.Write("look.css", "P { font-size: 40px }");
  site.Write("more.js", "more = 'script'");
  std::filesystem::copy_file(EXAMPLE_SITE "/images/paper.gif", site / "paper.gif");
  const std::string secret = "file://" + (site / "secret.txt");
  const std::string tries =
      "<TITLE>Trying</TITLE><LINK REL=stylesheet HREF=look.css><SCRIPT SRC=more.js></SCRIPT>"
      "<P ID=p>text</P><IMG ID=i SRC=paper.gif><IFRAME ID=f SRC='" +
      secret + R"('></IFRAME><SCRIPT>
    onload = async () => {
      let got = getComputedStyle(p).fontSize + i.naturalWidth + (window.more || '');
      try {
        const canvas = document.createElement('canvas');
        canvas.getContext('2d').drawImage(i, 0, 0);
        canvas.toDataURL();
        got += 'picture';
      } catch { }
      const add = text => { got += text; };
      await fetch('SECRET').then(reply => reply.text()).then(add, () => add('-'));
      await new Promise(done => {
        const request = new XMLHttpRequest();
        request.onload = () => add(request.responseText);
        request.onerror = () => add('-');
        request.onloadend = done;
        request.open('GET', 'SECRET');
        request.send();
      });
      try { add(document.getElementById('f').contentDocument.body.innerText); } catch { }
      await new Promise(done => {
        const place = what => { add(what); done(); };
        navigator.geolocation.getCurrentPosition(() => place('place'), () => place('-'));
      });
      add(await Notification.requestPermission());
      document.title = 'Got ' + got;
    };</SCRIPT>)";
  const std::string page = QString::fromStdString(tries).replace("SECRET", secret.c_str()).toStdString();
  site.Write("local.htm", page);
  server.answers["/far.htm"] = {page};
  const QString local = FileAddressOf("local.htm");
  const QString far = server / "far.htm";
  for (const QString& address : {local, far, local, local}) {
    Go(address);
    EXPECT_TRUE(Soon([&] { return Text("StatusBar1_3").startsWith("Got"); }));
    EXPECT_EQ(Text("StatusBar1_3"), address == local ? "Got 40px8script---denied" : "Got 16px0---denied");
    EXPECT_TRUE(GoesTo("first.htm", "First"));
  }
  server.answers["/link.htm"] = {"<TITLE>Link</TITLE><A HREF='" + secret +
                                 "'><DIV STYLE='height: 300px'>open</DIV></A>"};
  EXPECT_TRUE(GoesTo(server / "link.htm", "Link"));
  ClickPage();
  Rest(500);
  EXPECT_EQ(Address(), server / "link.htm");
}

// The same by ways that lead round about. The title names the ways by which the page could read a secret: all
// that there are for a page of a server and the server's own files, which shows that the ways are some; of
// the disk only what it has from itself.
TEST_F(RealBrowser, GivesPagesNoFilesByWaysRoundAbout) {
  const std::string tries = R"page(<TITLE>Trying</TITLE><LINK ID=css REL=stylesheet HREF=secret.css>
    <IFRAME ID=inner SRC=secret.htm></IFRAME><IFRAME ID=linked SRC=link.htm></IFRAME>
    <OBJECT ID=object DATA=secret.htm></OBJECT><EMBED ID=embed SRC=secret.svg TYPE=image/svg+xml>
    <IMG ID=picture SRC=secret.svg><svg><use id=use href='secret.svg#t'/></svg>
    <VIDEO ID=video><TRACK SRC=secret.vtt DEFAULT></VIDEO><SCRIPT>
    const here = location.href.replace(/[^/]*$/, '');
    const reply = (address, way) => fetch(address, way).then(got => got.text());
    const request = (address, type, part) => new Promise((done, failed) => {
      const asks = new XMLHttpRequest();
      asks.onload = () => done(part(asks));
      asks.onerror = failed;
      asks.open('GET', address);
      asks.responseType = type;
      asks.send();
    });
    const pixels = async (image) => {
      const canvas = document.createElement('canvas').getContext('2d');
      canvas.drawImage(await image, 0, 0);
      return canvas.getImageData(0, 0, 9, 9).data[3] > 0 && 'secret';
    };
    const worker = (address) => new Promise(done => {
      const code = `fetch('${address}').then(got => got.text()).then(postMessage)`;
      new Worker(URL.createObjectURL(new Blob([code]))).onmessage = event => done(event.data);
    });
    const within = (address) => new Promise(done => {
      onmessage = event => done(event.data);
      const frame = document.createElement('iframe');
      frame.srcdoc = `<script>fetch('${address}').then(got => got.text()).then(t => parent.postMessage(t, '*'))<\/script>`;
      document.body.append(frame);
    });
    const rulesOf = (sheet) => [...sheet.cssRules].map(rule => rule.cssText).join();
    const ways = {
      own: () => reply('data:text/plain,secret'),
      fetch: () => reply('secret.txt'),
      same: () => reply('secret.txt', {mode: 'same-origin'}),
      link: () => reply('link.txt'),
      request: () => request('link.txt', 'text', got => got.responseText),
      document: () => request('secret.xml', 'document', got => got.responseXML.documentElement.textContent),
      inner: () => inner.contentDocument.body.innerText,
      linked: () => linked.contentWindow.document.body.innerText,
      object: () => object.contentDocument.body.innerText,
      embed: () => embed.getSVGDocument().documentElement.textContent,
      use: () => document.getElementById('use').getBBox().width > 0 && 'secret',
      picture: () => pixels(picture),
      bitmap: () => pixels(createImageBitmap(picture)),
      rules: () => rulesOf(css.sheet),
      imported: () => rulesOf(css.sheet.cssRules[0].styleSheet),
      track: () => { video.textTracks[0].mode = 'hidden'; return [...video.textTracks[0].cues].map(cue => cue.text).join(); },
      worker: () => worker(here + 'secret.txt'),
      script: () => new Promise(done => { new Worker('secret.js').onmessage = event => done(event.data); }),
      module: () => import(here + 'secret.mjs').then(got => got.secret),
      within: () => within(here + 'secret.txt'),
      moved: () => { history.replaceState(null, '', 'secret.htm'); return reply(location.href); },
    };
    onload = async () => {
      await new Promise(done => setTimeout(done, 300));
      let got = '';
      for (const [name, way] of Object.entries(ways)) {
        const late = new Promise(done => setTimeout(done, 700, ''));
        const text = await Promise.race([(async () => way())(), late]).catch(() => '');
        if (String(text).includes('secret')) got += ' ' + name;
      }
      document.title = 'Got' + got;
    };</SCRIPT>)page";
  const struct {
    std::string name;
    std::string content;
    const char* type;
  } files[] = {
      {"tries.htm", tries, "text/html"},
      {"secret.txt", "secret", "text/plain"},
      {"secret.htm", "<P>secret</P>", "text/html"},
      {"link.txt", "secret", "text/plain"},
      {"link.htm", "secret", "text/html"},
      {"secret.xml", "<a>secret</a>", "text/xml"},
      {"secret.css", "@import 'more.css'; P { font-family: secret }", "text/css"},
      {"more.css", "B { font-family: secret }", "text/css"},
      {"secret.vtt", "WEBVTT\n\n00:00.000 --> 09:00.000\nsecret\n", "text/vtt"},
      {"secret.js", "postMessage('secret')", "text/javascript"},
      {"secret.mjs", "export const secret = 'secret'", "text/javascript"},
      {"secret.svg",
       "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' height='9'/>"
       "<text id='t' y='9'>secret</text></svg>",
       "image/svg+xml"},
  };
  WebServer server;
  const ScratchFolder outside;
  for (const auto& file : files) {
    server.answers["/" + file.name] = {file.content, file.type};
    const bool is_link = file.name.starts_with("link");
    (is_link ? outside : site).Write(file.name, file.content);
    if (is_link) std::filesystem::create_symlink(outside / file.name, site / file.name);
  }
  const struct {
    QString address;
    std::string got;
  } rows[] = {
      {server / "tries.htm",
       "Got own fetch same link request document inner linked object embed use picture bitmap rules imported "
       "track "
       "worker script module within moved"},
      {FileAddressOf("tries.htm"), "Got own"},
  };
  for (const auto& row : rows) {
    Go(row.address);
    EXPECT_TRUE(Soon([&] { return Text("StatusBar1_3").startsWith("Got"); }));
    EXPECT_EQ(Text("StatusBar1_3").toStdString(), row.got);
    EXPECT_TRUE(GoesTo(FileAddressOf("first.htm"), "First"));
  }
}

// The page of external links, as a program shows it that has read pages which would be more than that.
TEST_F(RealBrowser, ShowsThePageOfLinksWithoutWhatPagesPutInIt) {
  const std::string script = "<SCRIPT>document.title = 'run'</SCRIPT>";
  site.Write("first.htm",
             "<A HREF='http://127.0.0.1:9/" + script + "'>x</A><A HREF='http://127.0.0.1:9/\">" + script +
                 "'>x</A><A HREF=\"http://127.0.0.1:9/' onmouseover='alert(1)&quot;>&#60;b\">x</A>" +
                 "<A HREF='http://127.0.0.1:9/\x1B$B'>x</A><A HREF='http://127.0.0.1:9/\"" + script +
                 "\x1B(B'>x</A><A HREF='HTTP://127.0.0.1:9/+ADw-script+AD4-'>x</A>");
  site.Write("a&lt;b<i>.htm", "<A HREF='http://127.0.0.1:9/'>x</A>");
  driver->Press("Reset");
  if (driver->Find<QAbstractButton>("MarkedOnly")->isChecked()) driver->Press("MarkedOnly");
  driver->Choose(2);
  driver->Press("cmdSearch");
  const QString page = "file://" + QString::fromStdString(driver->program / "~TSLtemp.htm");
  EXPECT_TRUE(Becomes(page));
  Rest(200);
  EXPECT_EQ(Text("StatusBar1_3"), page);
}

TEST_F(RealBrowser, LoadsWhatAPageAsksFor) {
  WebServer server;
  site.Write("page.htm", "<TITLE>Page</TITLE><IMG SRC='" + (server / "picture.gif").toStdString() +
                             "'><A HREF='" + (server / "link.htm").toStdString() + "'>link</A>");
  EXPECT_TRUE(GoesTo("page.htm", "Page"));
  EXPECT_TRUE(Soon([&] { return !server.asked.empty(); }));
  Rest(200);
  EXPECT_EQ(server.asked, std::vector<std::string>{"/picture.gif"});
}

TEST_F(RealBrowser, OpensNewWindowsInItsPlace) {
  site.Write("opener.htm",
             "<TITLE>Opener</TITLE><SCRIPT>open('first.htm')</SCRIPT>"
             "<A TARGET=_blank HREF=second.htm><DIV STYLE='height: 300px'>on</DIV></A>");
  EXPECT_TRUE(GoesTo("opener.htm", "Opener"));
  ClickPage();
  EXPECT_TRUE(Becomes("Second"));
  EXPECT_EQ(QApplication::topLevelWidgets().count(&driver->start_up->Frame()), 1);
  driver->Press("tbToolBar_Back");
  EXPECT_TRUE(Becomes("Opener"));
}

TEST_F(RealBrowser, AsksWhereToSaveWhatIsNoPage) {
  WebServer server;
  const ScratchFolder home;
  qputenv("HOME", QByteArray::fromStdString(home.path()));  // where it would be saved unasked
  const std::string bytes(100000, '\0');
  server.answers["/x.zip"] = {bytes, "application/zip"};
  int asked = 0;
  for (const bool wanted : {false, true}) {
    driver->on_dialog = [&](QWidget& dialog) {
      auto* const save = qobject_cast<QFileDialog*>(&dialog);
      ASSERT_NE(save, nullptr);
      ++asked;
      if (wanted) QMetaObject::invokeMethod(save, "accept");
      if (!wanted) save->reject();
    };
    Go(server / "x.zip");
    EXPECT_TRUE(Soon([&] { return asked == (wanted ? 2 : 1); }));
    EXPECT_TRUE(Becomes("First"));
  }
  EXPECT_TRUE(
      Soon([&] { return Text("StatusBar1_2") == QString::fromStdString("Saved: " + (site / "x.zip")); }));
  EXPECT_EQ(site.Read("x.zip"), bytes);
  EXPECT_EQ(site.Names(), (std::vector<std::string>{"first.htm", "second.htm", "x.zip"}));
  EXPECT_FALSE(std::filesystem::exists(home / "Downloads/x.zip"));
}

TEST_F(RealBrowser, SavesWhereFilesCanBeSaved) {
  WebServer server;
  server.answers["/x.zip"] = {"new", "application/zip"};
  server.answers["/half.zip"] = {"half", "application/zip", "200 Yes", 2};
  site.Write("real.zip", "old");
  std::filesystem::create_symlink("real.zip", site / "link.zip");
  std::filesystem::create_symlink("/dev/null", site / "device.zip");
  const struct {
    QString offered;
    std::string name;
    std::string shown;  // the beginning of the status text
    std::string said;
  } rows[] = {
      {server / "x.zip", "link.zip", "Saved: " + (site / "real.zip"), ""},
      {server / "x.zip", "device.zip", "Stopped", "Not saved: " + (site / "device.zip: Not a regular file")},
      {server / "half.zip", "half.zip", "Saving: " + (site / "half.zip"), ""},
  };
  for (const auto& row : rows) {
    driver->said.clear();
    driver->answers = {"yes"};  // a file of that name is to be replaced
    driver->on_dialog = [&](QWidget& dialog) {
      auto* const save = qobject_cast<QFileDialog*>(&dialog);
      if (save == nullptr) return;
      save->selectFile(QString::fromStdString(site / row.name));
      QMetaObject::invokeMethod(save, "accept");
    };
    Go(row.offered);
    EXPECT_TRUE(Soon([&] { return Text("StatusBar1_2").toStdString().starts_with(row.shown); })) << row.name;
    EXPECT_TRUE(Soon([&] { return row.said.empty() || driver->LastSaid() == row.said; }));
  }
  driver.reset();  // a file that is not complete is dropped
  EXPECT_EQ(site.Read("real.zip"), "new");
  EXPECT_EQ(site.Names(),
            (std::vector<std::string>{"device.zip", "first.htm", "link.zip", "real.zip", "second.htm"}));
}

TEST_F(RealBrowser, AsksAServerOnceThatWantsAPassword) {
  WebServer server;
  server.answers["/closed.htm"] = {"<TITLE>Closed</TITLE>", "text/html",
                                   "401 No\r\nWWW-Authenticate: Basic realm=\"x\""};
  EXPECT_TRUE(GoesTo(server / "closed.htm", "Closed"));
  EXPECT_EQ(std::count(server.asked.begin(), server.asked.end(), "/closed.htm"), 1);
}

TEST_F(RealBrowser, OutlivesTheProcessThatShowsThePage) {
  WebServer server;
  site.Write("first.htm", "<TITLE>Waiting</TITLE><IMG SRC='" + (server / "never").toStdString() + "'>");
  driver->Press("tbToolBar_Refresh");
  EXPECT_TRUE(Soon([&] { return !server.asked.empty(); }));
  EXPECT_EQ(driver->Find("Command1")->property("Tag"), "0");
  int killed = 0;
  for (const auto& [id, depth] : Processes()) killed += depth == 2 && kill(id, SIGKILL) == 0 ? 1 : 0;
  ASSERT_GT(killed, 0);
  EXPECT_TRUE(
      Soon([&] { return Text("StatusBar1_2").startsWith("The process that showed the page has ended"); }));
  Rest(100);
  EXPECT_TRUE(Text("StatusBar1_2").startsWith("The process that showed the page has ended"));
  EXPECT_EQ(driver->Find("Command1")->property("Tag"), "");
  driver->on_dialog = [&](QWidget& dialog) {
    dialog.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(site / "page.pdf"));
    PressPrint(static_cast<QPrintDialog&>(dialog), 1);
  };
  driver->Press("PrintWB");
  EXPECT_EQ(Text("StatusBar1_2"), "Not printed: The page cannot be drawn");
  site.Write("first.htm", "<TITLE>Back again</TITLE>");
  driver->Press("tbToolBar_Refresh");
  EXPECT_TRUE(Becomes("Back again"));
}

TEST_F(RealBrowser, GetsAwayFromScriptsWithoutEnd) {
  site.Write("alerts.htm", "<TITLE>Alerts</TITLE><SCRIPT>for (;;) alert('a & <b>');</SCRIPT>");
  int boxes = 0;
  driver->on_dialog = [&](QWidget& dialog) {
    ASSERT_EQ(dialog.objectName(), "frmPageQuestion");
    EXPECT_EQ(dialog.findChild<QLabel*>()->text(), "a & <b>");
    ++boxes;
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
      if (button->text() == (boxes < 3 ? "&OK" : "&Stop the page")) return button->click();
    }
    static_cast<QDialog&>(dialog).reject();
  };
  Go("alerts.htm");
  EXPECT_TRUE(
      Soon([&] { return Text("StatusBar1_2").startsWith("The process that showed the page has ended"); }));
  EXPECT_EQ(boxes, 3);
  driver->on_dialog = nullptr;
  EXPECT_TRUE(GoesTo("first.htm", "First"));
  site.Write("loop.htm", "<TITLE>Loop</TITLE><SCRIPT>for (;;);</SCRIPT>");
  Go("loop.htm");
  Rest(500);
  EXPECT_TRUE(GoesTo("second.htm", "Second"));
}

// Memory of a process in MB, shared pages counted in parts.
long MemoryOf(int id) {
  std::ifstream rollup("/proc/" + std::to_string(id) + "/smaps_rollup");
  for (std::string word; rollup >> word;) {
    long size = 0;
    if (word == "Pss:" && rollup >> size) return size / 1024;
  }
  return 0;
}

// The processes that show pages collect what they left in their own time; this one must not grow.
TEST_F(RealBrowser, ShowsTwoHundredPagesInARow) {
#ifdef TESSARIL_SANITIZED
  GTEST_SKIP() << "the sanitizers take memory of their own";
#endif
  long before = 0;
  std::string text;
  for (int i = 0; i < 4000; ++i) text += i % 40 == 0 ? "<P>word " : "word ";
  for (int i = 0; i < 220; ++i) {
    const std::string name = "page" + std::to_string(i);
    site.Write(name + ".htm", "<TITLE>" + name + "</TITLE>" + text);
    ASSERT_TRUE(GoesTo(QString::fromStdString(name + ".htm"), QString::fromStdString(name)));
    if (i == 19) before = MemoryOf(getpid());
  }
  EXPECT_LT(MemoryOf(getpid()), before + 30);
  long all = 0;
  for (const auto& [id, depth] : Processes()) all += MemoryOf(id);
  EXPECT_LT(all, 800);
}

TEST(BrowserPlugin, SaysWhyTheBrowserCannotStart) {
  ScratchFolder folder;
  folder.Write("libtessaril_browser.so", "no library");
  folder.Write("process", "no program");
  const struct {
    const char* variable;
    std::string value;
    std::string plugin_folder;
    std::string reason;  // a piece of it
  } rows[] = {
      {"QTWEBENGINEPROCESS_PATH", folder / "process", PLUGIN_FOLDER, folder / "process" + ": missing"},
      {"QTWEBENGINE_RESOURCES_PATH", folder.path(), PLUGIN_FOLDER, "qtwebengine_resources.pak: missing"},
      {"UNUSED", "", folder.path(), "libtessaril_browser.so"},
      {"UNUSED", "", folder / "none", "libtessaril_browser.so"},
  };
  for (const auto& row : rows) {
    qputenv(row.variable, QByteArray::fromStdString(row.value));
    testing::internal::CaptureStderr();
    {
      Driver driver(EXAMPLE_SITE, "", BrowserFromPlugin(row.plugin_folder));
      driver.ClickItem("filList", "index.htm", true);
      EXPECT_EQ(driver.LastSaid(),
                "Can't open the browser because Microsoft Internet Explorer 4+ is not installed!");
      EXPECT_EQ(driver.Caption("Option1_5"), "Sho&w file in Editor, only");
      EXPECT_FALSE(driver.start_up->Frame().findChild<QAction*>("menuStartInBrowser")->isEnabled());
      EXPECT_NE(driver.program.Read("TSL32.ini").find("BrowserFirst = 0\r\n"), std::string::npos);
    }
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_NE(told.find("tessaril: no browser: "), std::string::npos) << told;
    EXPECT_NE(told.find(row.reason), std::string::npos) << told;
    qunsetenv(row.variable);
  }
}

}  // namespace
}  // namespace tessaril
