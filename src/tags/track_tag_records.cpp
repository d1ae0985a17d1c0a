#include "tags/track_tag_records.h"

namespace {

typedef _tagTrackTagValues R;

const KxTagField g_fields[KxTagCount] = {
    {&KxPropTitle, KxTagKindString, &R::title, nullptr, &R::titleFlags},
    {&KxPropArtist, KxTagKindString, &R::artist, nullptr, &R::artistFlags},
    {&KxPropArtist2, KxTagKindString, &R::artist2, nullptr, &R::artist2Flags},
    {&KxPropAlbum, KxTagKindString, &R::album, nullptr, &R::albumFlags},
    {&KxPropGenre, KxTagKindString, &R::genre, nullptr, &R::genreFlags},
    {&KxPropYear, KxTagKindString, &R::year, nullptr, &R::yearFlags},
    {&KxPropTrackNumber, KxTagKindNumber, nullptr, &R::trackNumber, &R::trackNumberFlags},
    {&KxPropRating, KxTagKindNumber, nullptr, &R::rating, &R::ratingFlags},
    {&KxPropTagInt12, KxTagKindNumber, nullptr, &R::tagInt12, &R::tagInt12Flags},
    {&KxPropAlbumArt, KxTagKindBytes, nullptr, nullptr, &R::artFlags},
};

}  // namespace

const KxTagField& KxTagFieldOf(int tag) { return g_fields[tag]; }

const KxPropertyKey* const KxTagPrefetchKeys[KxTagCount] = {
    &KxPropTitle, &KxPropArtist,  &KxPropArtist2, &KxPropAlbum,  &KxPropGenre,
    &KxPropTrackNumber, &KxPropTagInt12, &KxPropYear, &KxPropRating, &KxPropAlbumArt,
};
