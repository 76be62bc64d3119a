// TextEdit's private scrap. Private to the Toolbox.
#pragma once

namespace toolbox::textedit {

void startScrap();
void stopScrap();
// Takes the desk scrap's text into the private scrap when the desk scrap has
// changed since text last passed between the two: a person expects to paste what
// was copied last, wherever it was.
void bringInNewerDeskScrap();

}  // namespace toolbox::textedit
