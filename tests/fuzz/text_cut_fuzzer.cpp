// A room, then a text: where texts and lists are cut.
#include "lists.h"

#include "acl/access_list.h"

namespace nasshare::fuzzing {
namespace {

bool is_entity_letter(char c) {
  return c == '#' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Length of the character or the entity at the front.
std::size_t unit(std::string_view text) {
  std::size_t length = 1;
  if (text.front() == '&') {
    while (length < text.size() && is_entity_letter(text[length])) {
      ++length;
    }
    return length < text.size() && text[length] == ';' ? length + 1 : 1;
  }
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
    ++length;
  }
  return length;
}

// The longest beginning of whole characters and entities.
std::size_t longest_cut(std::string_view text, std::size_t room) {
  std::size_t end = 0;
  while (end < text.size() && end + unit(text.substr(end)) <= room) {
    end += unit(text.substr(end));
  }
  return end;
}

// "&", letters and ";" that are longer than any reference are cut like other text.
bool has_long_entity(std::string_view text) {
  for (; !text.empty(); text.remove_prefix(1)) {
    if (text.front() == '&' && unit(text) > 12) {
      return true;
    }
  }
  return false;
}

void require_text(std::string_view text, std::size_t room) {
  auto kept = cut_text(text, room);
  require(kept.data() == text.data() && kept.size() <= room && kept.size() <= text.size(),
          "a cut text is a beginning that fits");
  require(kept.size() + 16 > room || kept.size() == text.size(), "a cut takes no more than it must");
  if (can_xml_hold(text) && !has_long_entity(text)) {
    require(kept.size() == longest_cut(text, room), "a text is cut behind its last whole character");
  }
}

void require_list(std::string_view list, std::size_t room) {
  auto kept = cut_list(list, room);
  require(kept.data() == list.data() && kept.size() <= room, "a cut list is a beginning that fits");
  auto first = list.find(',');
  if (well_formed(list) && first != std::string_view::npos && first <= room) {
    require(well_formed(kept), "a list is cut between entries");
    require(kept.size() == list.size() || list[kept.size()] == ',', "no entry is cut");
  }
}

void require_field(std::string_view text, std::size_t width) {
  std::vector<char> field(width, 'x');
  assign(field, text);
  require(field[std::min(cut_text(text, width - 1).size(), width - 1)] == '\0', "a field is terminated");
  assign_list(field, text);
  require(view(field).size() < width, "a list field is terminated");

  Text<24> built{text, text};
  require(built.view().size() < 24 && built.c_str()[built.view().size()] == '\0',
          "a built text is terminated");
  require(!built.is_whole() || built.view().size() == 2 * text.size(), "a whole text has all of its pieces");
}

void require_words(std::string_view line) {
  for (auto rest = line; !rest.empty();) {
    auto word = take_word(rest);
    require(word.find_first_of(" \t\n\v\f\r") == std::string_view::npos, "a word has no blank");
    require(!word.empty() || rest.empty(), "the last word ends the line");
  }
  auto value = decimal(line);
  std::int32_t taken = 0;
  auto rest = line;
  if (take_decimal(rest, taken)) {
    require(taken == value && rest.size() < line.size(), "a number is read alike both ways");
  } else {
    require(rest == line, "a line without a number stays");
  }
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  auto room = static_cast<std::size_t>(std::max(0, decimal(parts.next())) % 256);
  auto text = parts.next();
  require_text(text, room);
  require_list(text, room);
  require_field(text, room + 1);
  require_words(text);
}

} // namespace nasshare::fuzzing
