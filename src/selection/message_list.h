// ListMsj: what a choice or a load has to say, in the operator's language.
#pragma once

#include <QListWidget>

#include <vector>

#include "shell/language.h"

namespace vesk {

class MessageList : public QListWidget {
  Q_OBJECT

 public:
  /// The language must outlive the list.
  MessageList(const Language& language, QWidget* parent);

  /// In the place of what was said before.
  void Show(const std::vector<Message>& messages);
  void Add(const Message& message);
  /// Said at the end of the next Show, which would wipe it off: what comes up while messages are gathered.
  void AddToNext(const Message& message) { waiting_ = message; }

 private:
  const Language& language_;
  Message waiting_;
};

}  // namespace vesk
