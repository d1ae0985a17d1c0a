// The picture's context menu: its enabling table and the clipboard rules.
#include "tags/art_menu_rules.h"

namespace {

const unsigned char kDropEffectCopy = 1;
const size_t kPastedPathChars = 259;  // the room of the pasted path, end mark aside

}  // namespace

bool ArtMenuMayOpen(const ArtMenuState& state) { return state.albumHasText && !state.browseBlocked; }

ArtMenuDecision DecideArtMenu(const ArtMenuState& state, const ArtClipboardOffer& offer,
                              bool (*acceptedFile)(const wchar_t* path)) {
    ArtMenuDecision d;
    if (!ArtMenuMayOpen(state)) return d;
    d.remove = !state.artRemoved && state.commandsEnabled;
    d.browse = state.commandsEnabled;

    bool canPaste = false;
    if (offer.hasBitmap) {
        canPaste = offer.bitmapStored;
    } else if (!offer.hasDib && offer.hasFileList) {
        // A file that was cut (no copy bit) is not offered; without the data it is.
        const bool cut = offer.hasDropEffect && !(offer.dropEffect & kDropEffectCopy);
        if (!cut && offer.fileCount == 1) {
            d.pastedPath = offer.firstFile.substr(0, kPastedPathChars);
            canPaste = true;
        }
    }
    const bool pasteable = offer.hasBitmap ? offer.bitmapStored
                                           : !d.pastedPath.empty() && acceptedFile && acceptedFile(d.pastedPath.c_str());
    d.paste = canPaste && pasteable && state.commandsEnabled;
    if (!d.paste) d.pastedPath.clear();

    d.lookup = state.hasLookup && state.commandsEnabled;
    const bool lookupGreyed = state.hasLookup && !d.lookup;
    d.open = d.remove || d.browse || d.paste || (state.singleItem && !lookupGreyed);
    return d;
}
