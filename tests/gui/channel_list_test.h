// The window with its channel list open.
#pragma once

#include "app/user_options.h"
#include "channel_list/channel_list_window.h"
#include "gui/window_test.h"

namespace q40::test {

inline const QString kChannels = QStringLiteral("tblChannels");
inline const QString kSpecials = QStringLiteral("tblSpecialChannels");

class ChannelList : public Window {
 protected:
  void Open(const std::vector<std::string>& faults = {}) {
    Start(faults, SavedDemo());
    Trigger("mnuChannelList");
    List().activateWindow();
    Activate(List());
    mirror_ = std::make_unique<GridMirror>(Table().channels());
    special_mirror_ = std::make_unique<GridMirror>(Table(kSpecials).channels());
    new QAbstractItemModelTester(Table().model(), &List());
  }
  // Columns are as they are at first, whatever a test before has left to be remembered.
  void SetUp() override {
    Window::SetUp();
    UserOptions::SetBytes("ChannelList", {});
  }
  void TearDown() override {
    for (const auto* mirror : {mirror_.get(), special_mirror_.get()}) {
      EXPECT_EQ(mirror == nullptr ? QStringList() : mirror->Stale(), QStringList());
    }
  }
  ChannelListWindow& List() { return Find<ChannelListWindow>("ChannelListWindow"); }
  ChannelTable& Table(const QString& name = kChannels) { return Find<ChannelTable>(name); }
  QString Said() {
    QApplication::processEvents();
    return Find<QLabel>("lblListStatus").text();
  }
  int Column(Field field, const QString& name = kChannels) {
    int column = 0;
    while (Table(name).channels().FieldAt(column) != field) ++column;
    return column;
  }
  QModelIndex At(int row, Field field, const QString& name = kChannels) {
    return Table(name).model()->index(row, Column(field, name));
  }
  QString Text(int row, Field field, const QString& name = kChannels) {
    return At(row, field, name).data().toString();
  }
  void GoTo(int row, Field field, const QString& name = kChannels) {
    Table(name).setFocus();
    Table(name).setCurrentIndex(At(row, field, name));
  }
  // Types into the cell that is current, as a user does.
  void Type(const QString& text, Qt::Key end = Qt::Key_Return) {
    for (const QChar c : text) QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
    QTest::keyClick(QApplication::focusWidget(), end);
  }
  // Selects memory rows, the first current, in the column of a field.
  void Select(const std::vector<int>& rows, Field field = Field::kFrequency) {
    GoTo(rows.front(), field);
    for (const int row : rows) {
      Table().selectionModel()->select(At(row, field),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
  }
  // Frequencies of rows, without the zeros: "145.5 145.6 - 144.8".
  QString Frequencies(int first, int count) {
    QStringList texts;
    for (int row = first; row < first + count; ++row) {
      const QString text = Text(row, Field::kFrequency);
      texts << (text.isEmpty() ? QStringLiteral("-") : QString::number(text.toDouble()));
    }
    return texts.join(' ');
  }
  // How many changes the document tells of while something is done.
  int Notices(const std::function<void()>& run) {
    int notices = 0;
    const auto counting =
        QObject::connect(window_->findChild<Session*>(), &Session::changed, [&] { ++notices; });
    run();
    QObject::disconnect(counting);
    return notices;
  }
  void Do(const char* action) {
    EXPECT_EQ(Notices([&] { Trigger(action); }), 1) << action;
  }

  std::unique_ptr<GridMirror> mirror_;
  std::unique_ptr<GridMirror> special_mirror_;
};

}  // namespace q40::test
