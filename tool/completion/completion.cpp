#include "tool/completion/completion.h"

#include <cstddef>
#include <exception>
#include <string_view>
#include <utility>

#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"
#include "tool/completion/command_argument.h"

namespace rux::tool {
namespace {

constexpr std::size_t kNextWord = std::string::npos;

// An option that takes a value, and where the value begins in the word that names the option.
struct Valued {
  const CommandArgument* option;  // null: the word has none
  std::size_t begin;              // or kNextWord
};

// An answer, and the bytes of the word at the cursor that it leaves alone.
struct Answer {
  Candidates candidates;
  std::size_t kept = 0;
};

void AddOptions(const Arguments& arguments, std::vector<Candidate>& words) {
  for (const CommandArgument& argument : arguments.all()) {
    if (!argument.is_option()) continue;
    for (const std::string& name : argument.each_name()) words.push_back({name, argument.help});
  }
}

// The words behind a command, read as CLI11 reads them.
class TypedArguments {
 public:
  explicit TypedArguments(const Arguments& arguments) : arguments_(arguments) {}

  void Read(const std::string& word) {
    if (std::exchange(awaits_value_of_, nullptr) != nullptr) return;
    if (!BeginsOption(word)) {
      const CommandArgument* argument = NextArgument();
      given_.emplace_back(argument == nullptr ? "" : argument->value_name, word);
    } else if (word == "--") {
      has_no_more_options_ = true;
    } else if (const Valued valued = ValuedIn(word); valued.begin == kNextWord) {
      awaits_value_of_ = valued.option;
    }
  }

  Answer At(const std::string& word) const {
    if (awaits_value_of_ != nullptr) return Values(*awaits_value_of_, word, 0);
    if (BeginsOption(word)) {
      const Valued valued = ValuedIn(word);
      const bool is_in_word = valued.option != nullptr && valued.begin != kNextWord;
      return is_in_word ? Values(*valued.option, word, valued.begin) : OptionNames();
    }
    const CommandArgument* argument = NextArgument();
    return argument == nullptr ? OptionNames() : Values(*argument, word, 0);
  }

 private:
  bool BeginsOption(const std::string& word) const {
    return !has_no_more_options_ && !word.empty() && word.front() == '-';
  }

  Valued ValuedIn(const std::string& word) const {
    if (word.rfind("--", 0) == 0) {
      const std::size_t equals = word.find('=');
      const CommandArgument* option = arguments_.Find(word.substr(0, equals));
      if (option == nullptr || !option->takes_value()) return {nullptr, 0};
      return {option, equals == std::string::npos ? kNextWord : equals + 1};
    }
    for (std::size_t i = 1; i < word.size(); ++i) {
      const CommandArgument* option = arguments_.Find(std::string("-") + word[i]);
      if (option == nullptr) break;
      if (option->takes_value()) return {option, i + 1 < word.size() ? i + 1 : kNextWord};
    }
    return {nullptr, 0};
  }

  // The one that the next word without a dash is for; null when all have theirs.
  const CommandArgument* NextArgument() const {
    std::size_t before = given_.size();
    for (const CommandArgument& argument : arguments_.all()) {
      if (argument.is_option()) continue;
      if (before == 0 || argument.takes_several()) return &argument;
      --before;
    }
    return nullptr;
  }

  Answer OptionNames() const {
    Answer answer;
    AddOptions(arguments_, answer.candidates.words);
    return answer;
  }

  Answer Values(const CommandArgument& argument, const std::string& word, std::size_t begin) const {
    Answer answer{CandidatesFor(argument, given_, word.substr(begin)), begin};
    for (Candidate& candidate : answer.candidates.words) {
      candidate.text.insert(0, word, 0, begin);
    }
    return answer;
  }

  const Arguments& arguments_;
  Given given_;
  const CommandArgument* awaits_value_of_ = nullptr;
  bool has_no_more_options_ = false;
};

Answer CommandNames(const std::string& word) {
  Answer answer;
  if (!word.empty() && word.front() == '-') {
    Arguments arguments;
    Program().set_up(arguments);
    AddOptions(arguments, answer.candidates.words);
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
    Arguments arguments;
    command.set_up(arguments);
    TypedArguments typed(arguments);
    for (std::size_t i = 1; i + 1 < words.size(); ++i) typed.Read(words[i]);
    return typed.At(words.back());
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
    if (support::SafeText(word.text) != word.text) continue;
    text += word.text + '\t' + word.rest + '\t' +
            support::Shortened(support::SafeText(word.description)) + '\n';
  }
  return text.empty() ? text : "words\n" + text;
}

}  // namespace

support::ExitStatus Complete(const std::vector<std::string>& words) {
  try {
    support::PrintOut(TextOf(AnswerTo(words)));
  } catch (const std::exception&) {
    // A command line that nothing can be told about: a file that is not there yet, or damaged.
  }
  return support::ExitStatus::kDone;
}

}  // namespace rux::tool
