// IKxItemPreview of the in-memory library. The picture is a file (kind 1) or pixels that a
// platform hook turns into a bitmap (kind 2).
#include "host/library/library_object.h"

#include <algorithm>

namespace kxhost {

namespace {

PreviewBitmapMaker g_maker = DefaultPreviewBitmapMaker();

class PreviewObject final : public LibraryObject, public IKxItemPreview {
public:
    PreviewObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId item) : LibraryObject(lib, "preview", item) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
        if (!ppv) return E_POINTER;
        *ppv = nullptr;
        if (!IsEqualIID(riid, IID_IKxItemPreview) && !IsEqualIID(riid, IID_IUnknown)) return E_NOINTERFACE;
        AddRefImpl();
        *ppv = static_cast<IKxItemPreview*>(this);
        return S_OK;
    }
    KXHOST_IUNKNOWN_REFCOUNT

    // A bitmap picture also hands out a string (the item's name), so that a caller that forgets to
    // free the string with kind 2 leaks a block the audit sees.
    HRESULT STDMETHODCALLTYPE GetPreviewSource(DWORD* kind, LPWSTR* path) override {
        if (kind) *kind = 0;
        if (path) *path = nullptr;
        return Lib().Run(Op::GetPreviewSource, false, [&]() -> HRESULT {
            if (!kind || !path) return E_POINTER;
            const PreviewPicture* picture = Lib().PreviewOf(Item());
            if (!picture) return E_FAIL;
            const bool isFile = !picture->path.empty();
            *path = TaskMemString(isFile ? picture->path.c_str() : Lib().NameOf(Item()).c_str());
            if (!*path) return E_OUTOFMEMORY;
            *kind = isFile ? 1u : static_cast<DWORD>(KX_PREVIEW_BITMAP);
            return S_OK;
        });
    }

    // The pixels shrunk (never grown) into the asked size with one ratio, truncating, nearest pixel.
    HRESULT STDMETHODCALLTYPE GetPreviewBitmap(const SIZE* size, HBITMAP* bitmap) override {
        if (bitmap) *bitmap = nullptr;
        return Lib().Run(Op::GetPreviewBitmap, false, [&]() -> HRESULT {
            if (!size || !bitmap) return E_POINTER;
            if (size->cx <= 0 || size->cy <= 0) return E_INVALIDARG;
            const PreviewPicture* picture = Lib().PreviewOf(Item());
            if (!picture || !picture->path.empty() || picture->width <= 0 || picture->height <= 0) return E_UNEXPECTED;
            if (!g_maker) return E_NOTIMPL;
            LONG w = picture->width, h = picture->height;
            if (w > size->cx || h > size->cy) {
                const double ratio = std::min(static_cast<double>(size->cx) / w, static_cast<double>(size->cy) / h);
                w = std::max<LONG>(1, static_cast<LONG>(w * ratio));
                h = std::max<LONG>(1, static_cast<LONG>(h * ratio));
            }
            std::vector<DWORD> scaled(static_cast<size_t>(w) * h);
            for (LONG y = 0; y < h; ++y) {
                const LONG sy = static_cast<LONG>(static_cast<long long>(y) * picture->height / h);
                for (LONG x = 0; x < w; ++x) {
                    const LONG sx = static_cast<LONG>(static_cast<long long>(x) * picture->width / w);
                    scaled[static_cast<size_t>(y) * w + x] =
                        picture->pixels[static_cast<size_t>(sy) * picture->width + sx];
                }
            }
            return g_maker(w, h, scaled.data(), bitmap);
        });
    }
};

}  // namespace

void SetPreviewBitmapMaker(PreviewBitmapMaker maker) { g_maker = maker; }

HRESULT CreatePreviewObject(const std::shared_ptr<InMemoryLibrary>& lib, ItemId item, REFIID, void** ppv) {
    *ppv = static_cast<IKxItemPreview*>(new PreviewObject(lib, item));
    return S_OK;
}

}  // namespace kxhost
