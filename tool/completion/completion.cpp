#include "tool/completion/completion.h"

#include <cstddef>
#include <exception>
#include <string>
#include <vector>

#include "support/failure.h"
#include "support/safe_text.h"
#include "support/standard_streams.h"
#include "tool/command.h"
#include "tool/command_line.h"

namespace rux::tool {
namespace {

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

Answer OptionNames(const Arguments& arguments) {
  Answer answer;
  AddOptions(arguments, answer.candidates.words);
  return answer;
}

// A short option at the end of the word has no value yet: its name may go on.
bool EndsInName(const TypedLine& line, const std::string& word) {
  return line.begin == word.size() && word.size() > 1 && word[1] != '-';
}

// What follows the @ of a list is the name of any file.
bool IsList(const TypedLine& line, const std::string& word) {
  return line.argument->value_name == "SCRIPT" && !line.argument->is_option() &&
         word.compare(line.begin, 1, "@") == 0;
}

Answer Values(const TypedLine& line, const std::string& word) {
  if (IsList(line, word)) return {{{}, true, {}}, line.begin + 1};
  Answer answer{CandidatesFor(*line.argument, line.given, word.substr(line.begin)), line.begin};
  for (Candidate& candidate : answer.candidates.words) {
    candidate.text.insert(0, word, 0, line.begin);
  }
  return answer;
}

Answer CommandNames(const std::string& word) {
  if (!word.empty() && word.front() == '-') {
    Arguments arguments;
    Program().set_up(arguments);
    return OptionNames(arguments);
  }
  Answer answer;
  for (const Command& command : Commands()) {
    answer.candidates.words.push_back({command.name, command.help});
  }
  return answer;
}

Answer AnswerTo(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  if (words.size() == 1) return CommandNames(words.front());
  const TypedLine line = ReadTypedLine(words);
  if (line.command == nullptr) return {};
  const std::string& word = words.back();
  const bool has_value = line.argument != nullptr && !EndsInName(line, word);
  return has_value ? Values(line, word) : OptionNames(line.arguments);
}

std::string TextOf(const Answer& answer) {
  std::string text;
  if (answer.candidates.are_files) {
    text = "files\t" + std::to_string(answer.kept);
    for (const std::string& extension : answer.candidates.extensions) text += '\t' + extension;
    return text + '\n';
  }
  for (const Candidate& word : answer.candidates.words) {
    // What cannot be typed might break the lines, too.
    if (!support::CanBeTyped(word.text)) continue;
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
    // A command line without candidates: its file is not there yet, or damaged.
  }
  return support::ExitStatus::kDone;
}

}  // namespace rux::tool
