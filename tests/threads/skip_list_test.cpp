#include "basic_skip_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

struct item {
  basic::detail::skip_list_node<item> links;
};

// Checks the list against a plain vector kept in the documented order: ascending keys, and among
// equal keys the most recently inserted first.
TEST(skip_list, matches_a_simple_ordered_model) {
  for (const unsigned seed : {1u, 7u, 42u, 2024u}) {
    std::mt19937 random(seed);
    std::vector<item> items(200);
    std::vector<item*> model;
    std::vector<item*> outside;
    for (auto& i : items) {
      i.links.item = &i;
      outside.push_back(&i);
    }
    basic::detail::skip_list<item> list;
    for (int step = 0; step < 4000; ++step) {
      const int action = static_cast<int>(random() % 3);
      if (action == 0 && !outside.empty()) {
        item* added = outside.back();
        outside.pop_back();
        added->links.key = random() % 8;
        list.insert(&added->links);
        auto at = std::find_if(model.begin(), model.end(),
                               [&](item* i) { return i->links.key >= added->links.key; });
        model.insert(at, added);
      } else if (action == 1) {
        const std::uint32_t key = random() % 9;
        const std::uint32_t below = key + random() % 4;
        item* taken = list.take_first_at_least(key, below);
        auto at = std::find_if(model.begin(), model.end(),
                               [&](item* i) { return i->links.key >= key; });
        item* expected = (at != model.end() && (*at)->links.key < below) ? *at : nullptr;
        ASSERT_EQ(taken, expected) << "seed " << seed << " step " << step;
        if (expected) {
          model.erase(at);
          outside.push_back(expected);
        }
      } else {
        item* front = list.pop_front();
        ASSERT_EQ(front, model.empty() ? nullptr : model.front()) << "seed " << seed;
        if (front) {
          model.erase(model.begin());
          outside.push_back(front);
        }
      }
      std::vector<item*> order;
      for (auto* n = list.first(); n != nullptr; n = n->next[0]) order.push_back(n->item);
      ASSERT_EQ(order, model) << "seed " << seed << " step " << step;
      ASSERT_EQ(list.empty(), model.empty());
    }
  }
}

}  // namespace
