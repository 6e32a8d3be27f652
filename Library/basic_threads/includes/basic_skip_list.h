#pragma once

#include <cstdint>

namespace basic {
namespace detail {

template <class T>
struct skip_list_node {
  static constexpr int max_level = 12;

  T* item = nullptr;
  std::uint32_t key = 0;
  int level = 0;
  skip_list_node* next[max_level] = {};
};

// An intrusive ordered multiset, ascending by key. The nodes live in the items, so insertion and
// removal never allocate. A node is inserted before every node with an equal key, so among equal
// keys the most recently inserted comes first. Not synchronised.
template <class T>
class skip_list {
 public:
  using node = skip_list_node<T>;
  static constexpr int max_level = node::max_level;

  bool empty() const { return _head.next[0] == nullptr; }
  const node* first() const { return _head.next[0]; }

  void insert(node* added) {
    node* update[max_level];
    find(added->key, update);
    added->level = random_level();
    for (int i = 0; i < added->level; ++i) {
      added->next[i] = update[i]->next[i];
      update[i]->next[i] = added;
    }
  }

  // Removes and returns the first item whose key is at least `key`, provided that key is below
  // `below`; otherwise leaves the list alone and returns null.
  T* take_first_at_least(std::uint32_t key, std::uint32_t below) {
    node* update[max_level];
    node* found = find(key, update);
    if (found == nullptr || !(found->key < below)) return nullptr;
    unlink(found, update);
    return found->item;
  }

  T* pop_front() {
    node* front = _head.next[0];
    if (front == nullptr) return nullptr;
    node* update[max_level];
    for (node*& predecessor : update) predecessor = &_head;
    unlink(front, update);
    return front->item;
  }

 private:
  // Fills update[i] with the last node on level i whose key is below `key`, and returns the first
  // node with a key at least `key`. On every level that node links into, it follows update[i].
  node* find(std::uint32_t key, node** update) {
    node* at = &_head;
    for (int i = max_level - 1; i >= 0; --i) {
      while (at->next[i] != nullptr && at->next[i]->key < key) at = at->next[i];
      update[i] = at;
    }
    return at->next[0];
  }

  static void unlink(node* removed, node** update) {
    for (int i = 0; i < removed->level; ++i) update[i]->next[i] = removed->next[i];
    removed->level = 0;
  }

  // One more level with probability 1/4 each: the pool holds a handful of workers, so a flat,
  // short list serves it best.
  int random_level() {
    _seed ^= _seed << 13;
    _seed ^= _seed >> 17;
    _seed ^= _seed << 5;
    std::uint32_t bits = _seed;
    int level = 1;
    while (level < max_level && (bits & 3u) == 0) {
      ++level;
      bits >>= 2;
    }
    return level;
  }

  node _head;
  std::uint32_t _seed = 0x9E3779B9u;
};

}  // namespace detail
}  // namespace basic
