#include "tool/completion/completion.h"

#include <cstddef>
#include <exception>
#include <string_view>
#include <utility>

#include "CLI/CLI.hpp"
#include "tool/command.h"
#include "tool/completion/command_argument.h"
#include "tool/standard_streams.h"
#include "tool/text/safe_text.h"

namespace rux {
namespace {

constexpr std::size_t kNextWord = std::string::npos;

// An option that takes a value, and where the value begins in the word that names the option.
struct Valued {
  CLI::Option* option;  // null: the word has none
  std::size_t begin;    // or kNextWord
};

// An answer, and the bytes of the word at the cursor that it leaves alone.
struct Answer {
  Candidates candidates;
  std::size_t kept = 0;
};

bool TakesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

bool IsFile(CLI::Option& option) {
  try {
    return option.get_validator(kFileName) != nullptr;
  } catch (const CLI::OptionNotFound&) {
    return false;
  }
}

// "FORMAT:{human,gcc}" is how the help tells of an argument that is one of these.
std::vector<std::string> ChoicesIn(const std::string& type) {
  const std::size_t open = type.find('{');
  const std::size_t close = type.find('}');
  if (open == std::string::npos || close == std::string::npos) return {};
  return CLI::detail::split(type.substr(open + 1, close - open - 1), ',');
}

CommandArgument ArgumentOf(CLI::Option& option, bool is_option) {
  const std::string type = option.get_type_name();
  return {is_option ? type.substr(0, type.find(':')) : option.get_name(true), is_option,
          IsFile(option), ChoicesIn(type)};
}

void AddOptions(CLI::App& app, std::vector<Candidate>& words) {
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_group().empty()) continue;
    for (const std::string& name : option->get_snames()) {
      words.push_back({'-' + name, option->get_description()});
    }
    for (const std::string& name : option->get_lnames()) {
      words.push_back({"--" + name, option->get_description()});
    }
  }
}

// The arguments of a command, read as CLI11 reads them.
class Arguments {
 public:
  explicit Arguments(CLI::App& command) : command_(command) {}

  void Read(const std::string& word) {
    if (std::exchange(awaits_value_of_, nullptr) != nullptr) return;
    if (!BeginsOption(word)) {
      CLI::Option* argument = NextArgument();
      given_.emplace_back(argument == nullptr ? "" : argument->get_name(true), word);
    } else if (word == "--") {
      has_no_more_options_ = true;
    } else if (const Valued valued = ValuedIn(word); valued.begin == kNextWord) {
      awaits_value_of_ = valued.option;
    }
  }

  Answer At(const std::string& word) {
    if (awaits_value_of_ != nullptr) return Values(*awaits_value_of_, true, word, 0);
    if (BeginsOption(word)) {
      const Valued valued = ValuedIn(word);
      const bool is_in_word = valued.option != nullptr && valued.begin != kNextWord;
      return is_in_word ? Values(*valued.option, true, word, valued.begin) : OptionNames();
    }
    CLI::Option* argument = NextArgument();
    return argument == nullptr ? OptionNames() : Values(*argument, false, word, 0);
  }

 private:
  bool BeginsOption(const std::string& word) const {
    return !has_no_more_options_ && !word.empty() && word.front() == '-';
  }

  Valued ValuedIn(const std::string& word) {
    if (word.rfind("--", 0) == 0) {
      const std::size_t equals = word.find('=');
      CLI::Option* option = command_.get_option_no_throw(word.substr(0, equals));
      if (option == nullptr || !TakesValue(*option)) return {nullptr, 0};
      return {option, equals == std::string::npos ? kNextWord : equals + 1};
    }
    for (std::size_t i = 1; i < word.size(); ++i) {
      CLI::Option* option = command_.get_option_no_throw(std::string("-") + word[i]);
      if (option == nullptr) break;
      if (TakesValue(*option)) return {option, i + 1 < word.size() ? i + 1 : kNextWord};
    }
    return {nullptr, 0};
  }

  // The one that the next word without a dash is for; null when all have theirs.
  CLI::Option* NextArgument() {
    std::size_t before = given_.size();
    for (CLI::Option* option : command_.get_options()) {
      if (!option->get_positional()) continue;
      const auto most = static_cast<std::size_t>(option->get_items_expected_max());
      if (before < most) return option;
      before -= most;
    }
    return nullptr;
  }

  Answer OptionNames() {
    Answer answer;
    AddOptions(command_, answer.candidates.words);
    return answer;
  }

  Answer Values(CLI::Option& option, bool is_option, const std::string& word, std::size_t begin) {
    Answer answer{CandidatesFor(ArgumentOf(option, is_option), given_, word.substr(begin)), begin};
    for (Candidate& candidate : answer.candidates.words) {
      candidate.text.insert(0, word, 0, begin);
    }
    return answer;
  }

  CLI::App& command_;
  Given given_;
  CLI::Option* awaits_value_of_ = nullptr;
  bool has_no_more_options_ = false;
};

Answer CommandNames(const std::string& word) {
  Answer answer;
  if (!word.empty() && word.front() == '-') {
    CLI::App program;
    SetUpProgram(program);
    AddOptions(program, answer.candidates.words);
    return answer;
  }
  for (const Command& command : Commands()) {
    answer.candidates.words.push_back({command.name, command.help});
  }
  return answer;
}

Answer AnswerTo(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  if (words.size() == 1) return CommandNames(words.front());
  for (const Command& command : Commands()) {
    if (words.front() != command.name) continue;
    CLI::App app;
    command.set_up(app);
    Arguments arguments(app);
    for (std::size_t i = 1; i + 1 < words.size(); ++i) arguments.Read(words[i]);
    return arguments.At(words.back());
  }
  return {};
}

std::string TextOf(const Answer& answer) {
  std::string text;
  if (answer.candidates.are_files) {
    text = "files\t" + std::to_string(answer.kept);
    for (const std::string& extension : answer.candidates.extensions) text += '\t' + extension;
    return text + '\n';
  }
  for (const Candidate& word : answer.candidates.words) {
    // Control characters cannot be typed, and would break the lines.
    if (SafeText(word.text) != word.text) continue;
    text += word.text + '\t' + word.rest + '\t' + Shortened(SafeText(word.description)) + '\n';
  }
  return text.empty() ? text : "words\n" + text;
}

}  // namespace

ExitStatus Complete(const std::vector<std::string>& words) {
  try {
    PrintOut(TextOf(AnswerTo(words)));
  } catch (const std::exception&) {
    // A command line that nothing can be told about: a file that is not there yet, or damaged.
  }
  return ExitStatus::kDone;
}

}  // namespace rux
