// One singly linked list for every head with count, head and tail. While count is 0, head and tail mean
// nothing: the last node may go without tail being cleared, and the next append sets both.
#pragma once

#include "support/trouble.h"

#include <cstdlib>
#include <iterator>
#include <type_traits>

namespace nasshare {

template <class List> using NodeOf = std::remove_pointer_t<decltype(List::head)>;

template <class Node> Node *new_node() {
  auto *node = static_cast<Node *>(std::calloc(1, sizeof(Node)));
  if (node == nullptr) {
    note_trouble();
  }
  return node;
}

template <class Node> class NodeIterator {
public:
  explicit NodeIterator(Node *node) : node_(node) {}
  Node &operator*() const { return *node_; }
  NodeIterator &operator++() {
    node_ = node_->next;
    return *this;
  }
  bool operator==(std::default_sentinel_t /*end*/) const { return node_ == nullptr; }

private:
  Node *node_;
};

template <class List> class NodeRange {
public:
  explicit NodeRange(const List &list) : first_(list.count == 0 ? nullptr : list.head) {}
  [[nodiscard]] auto begin() const { return NodeIterator(first_); }
  [[nodiscard]] static auto end() { return std::default_sentinel; }

private:
  NodeOf<List> *first_;
};

template <class List> NodeRange<List> each(const List &list) {
  return NodeRange<List>(list);
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

// Takes the very node out of the list; false when it is not in it.
template <class List> bool unlink_node(List &list, NodeOf<List> *node) {
  if (list.count == 0 || node == nullptr) {
    return false;
  }
  if (node == list.head) {
    list.head = node->next;
  } else {
    auto *before = list.head;
    while (before != nullptr && before->next != node) {
      before = before->next;
    }
    if (before == nullptr) {
      return false;
    }
    before->next = node->next;
    if (node == list.tail) {
      list.tail = before;
    }
  }
  --list.count;
  return true;
}

// Unlinks and frees the very node; nothing when it is not in the list.
template <class List> void remove(List &list, NodeOf<List> *node) {
  if (unlink_node(list, node)) {
    std::free(node);
  }
}

template <class List> void clear(List &list) {
  auto *node = list.count == 0 ? nullptr : list.head;
  while (node != nullptr) {
    auto *next = node->next;
    std::free(node);
    node = next;
  }
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

// Removes every node that matches.
template <class List, class Predicate> void remove_matching(List &list, Predicate matches) {
  while (auto *node = find(list, matches)) {
    remove(list, node);
  }
}

} // namespace nasshare
