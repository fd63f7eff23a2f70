// page_hand STEP ...: works the add-on's pages in whatever process they are; see page_hand.h. Ends with 1
// when a step cannot be done within a minute.
#include <cstdio>

#include "automation/page_hand.h"

int wmain(int count, wchar_t** arguments) {
  constexpr int kPause = 50;
  constexpr int kPatience = 60 * 1000 / kPause;
  tessel::test::PageHand hand({arguments + 1, arguments + count}, tessel::test::Reach::kEveryProcess);
  for (int waited = 0; !hand.IsDone(); ++waited) {
    if (hand.Left().front() == L"{BOXES}") waited = 0;
    if (waited == kPatience) {
      std::printf("page_hand: %zu steps left, the next is \"%ls\"\n", hand.Left().size(),
                  hand.Left().front().c_str());
      return 1;
    }
    const std::size_t before = hand.Left().size();
    hand.Try();
    if (hand.Left().size() != before) waited = 0;
    Sleep(kPause);
  }
  return 0;
}
