#pragma once

#include <string>
#include <vector>

namespace homewarden::speech {

// What Flite knows of English: how a text is read aloud, and how a word sounds by its spelling. No
// voice of it is used and no sound made. May be called from any thread; the first call loads.

// The words of an ASCII text as they are read: "TV 2" is t, v, two. Lower case, of letters and
// apostrophes; a word of neither is left out.
std::vector<std::string> english_words(const std::string& text);

// The phones of one such word in the names of the recogniser's model, with blanks between them:
// "K IH CH AH N". Empty when there is no sound in it.
std::string english_phones(const std::string& word);

}  // namespace homewarden::speech
