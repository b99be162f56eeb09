#include "selection/message_list.h"

#include <utility>

namespace vesk {

MessageList::MessageList(const Language& language, QWidget* parent)
    : QListWidget(parent), language_(language) {
  setObjectName(QStringLiteral("ListMsj"));
  setWordWrap(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumHeight(2 * fontMetrics().height());
}

void MessageList::Show(const std::vector<Message>& messages) {
  clear();
  for (const Message& message : messages) Add(message);
  Add(std::exchange(waiting_, {}));
}

void MessageList::Add(const Message& message) {
  if (!message.IsEmpty()) addItem(language_.Say(message));
}

}  // namespace vesk
