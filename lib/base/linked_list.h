// One singly linked list for every head with count, head and tail. While count is 0, head and tail mean
// nothing: the last node may go without tail being cleared, and the next append sets both.
#pragma once

#include "base/watch.h"

#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <type_traits>

namespace nasshare {

template <class List> using NodeOf = std::remove_pointer_t<decltype(List::head)>;

// A zero-filled node; null, and doubt noted, when memory is short.
template <class Node> [[nodiscard]] Node *new_node_or_note() {
  auto *const node = static_cast<Node *>(std::calloc(1, sizeof(Node)));
  if (node == nullptr) {
    note_doubt();
  }
  return node;
}

template <class Node> class NodeIterator {
public:
  using iterator_category = std::forward_iterator_tag;
  using value_type = Node;
  using difference_type = std::ptrdiff_t;
  using pointer = Node *;
  using reference = Node &;

  NodeIterator() = default;
  explicit NodeIterator(Node *node) : node_(node) {}

  Node &operator*() const { return *node_; }
  Node *operator->() const { return node_; }
  NodeIterator &operator++() {
    node_ = node_->next;
    return *this;
  }
  NodeIterator operator++(int) {
    const auto before = *this;
    ++*this;
    return before;
  }
  bool operator==(const NodeIterator &) const = default;

private:
  Node *node_ = nullptr;
};

template <class Node> class NodeRange {
public:
  explicit NodeRange(Node *first) : first_(first) {}
  [[nodiscard]] auto begin() const { return NodeIterator<Node>(first_); }
  [[nodiscard]] auto end() const { return NodeIterator<Node>(); }

private:
  Node *first_;
};

// The nodes of the list, for range-for and algorithms.
template <class List> NodeRange<NodeOf<List>> each(const List &list) {
  return NodeRange(list.count == 0 ? nullptr : list.head);
}

template <class List> void append(List &list, NodeOf<List> *node) {
  node->next = nullptr;
  if (list.count == 0) {
    list.head = node;
  } else {
    list.tail->next = node;
  }
  list.tail = node;
  ++list.count;
}

// Takes out every node that matches, in one pass, and hands it to take(node).
template <class List, class Predicate, class Take>
void unlink_matching(List &list, Predicate matches, Take take) {
  NodeOf<List> *before = nullptr;
  auto *node = list.count == 0 ? nullptr : list.head;
  while (node != nullptr) {
    auto *const next = node->next;
    if (!matches(*node)) {
      before = node;
    } else {
      (before == nullptr ? list.head : before->next) = next;
      if (node == list.tail && before != nullptr) {
        list.tail = before;
      }
      --list.count;
      take(node);
    }
    node = next;
  }
}

// Unlinks and frees every node that matches.
template <class List, class Predicate> void remove_matching(List &list, Predicate matches) {
  unlink_matching(list, matches, [](auto *node) { std::free(node); });
}

// Takes the very node out of the list; false when it is not in it.
template <class List> bool unlink_node(List &list, const NodeOf<List> *node) {
  bool was_listed = false;
  unlink_matching(
      list, [node](const auto &listed) { return &listed == node; }, [&](auto *) { was_listed = true; });
  return was_listed;
}

// Unlinks and frees the very node; nothing when it is not in the list.
template <class List> void remove(List &list, const NodeOf<List> *node) {
  remove_matching(list, [node](const auto &listed) { return &listed == node; });
}

template <class List> void clear(List &list) {
  remove_matching(list, [](const auto &) { return true; });
  list.count = 0;
  list.head = nullptr;
  list.tail = nullptr;
}

template <class List, class Predicate> NodeOf<List> *find(const List &list, Predicate matches) {
  for (auto &node : each(list)) {
    if (matches(node)) {
      return &node;
    }
  }
  return nullptr;
}

} // namespace nasshare
