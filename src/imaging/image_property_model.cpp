// Reading, showing and walking of the image properties dialog.
#include "imaging/image_property_model.h"

#include "base/owners.h"

namespace {
const SIZE kPreviewRequest = {150, 150};
}

CImagePropertyModel::CImagePropertyModel(IKxContentSite* site, IKxContentFolder* folder, KxPcPidl item,
                                         IPropertyDialogControls& dialog, IImagePropertyControls& controls,
                                         IKxPropertyTextSource& texts)
    : CPropertyItemModel(site, folder, item, dialog), m_controls(controls), m_textSource(texts) {}

CImagePropertyModel::~CImagePropertyModel() { Release(); }

void CImagePropertyModel::FreePreviewSource() {
    CoTaskMemFree(m_previewPath);
    m_previewPath = nullptr;
    if (m_hPreviewSource) m_dialog.DeleteBitmap(m_hPreviewSource);
    m_hPreviewSource = nullptr;
}

HRESULT CImagePropertyModel::ReadImageProperties(KxPcPidl item) {
    m_texts.Clear();
    m_orientation = -1;
    CKxComPtr<IKxItemProperties> properties;
    CKxComPtr<IKxItemPreview> preview;
    const HRESULT opened = OpenItemObjects(item, properties, preview);
    if (FAILED(opened)) return opened;

    FreePreviewSource();
    DWORD kind = 0;
    const HRESULT source = preview->GetPreviewSource(&kind, &m_previewPath);
    if (source != S_OK || kind == KX_PREVIEW_BITMAP) {
        // Kind 2 asks for a bitmap; a failed answer gives no picture. Either way the string goes.
        CoTaskMemFree(m_previewPath);
        m_previewPath = nullptr;
    }
    if (source == S_OK && kind == KX_PREVIEW_BITMAP) {
        HBITMAP bitmap = nullptr;
        if (preview->GetPreviewBitmap(&kPreviewRequest, &bitmap) == S_OK) {
            m_hPreviewSource = bitmap;
        } else if (bitmap) {
            m_dialog.DeleteBitmap(bitmap);
        }
    }

    LONG orientation = -1;
    const HRESULT hr = KxReadImagePropertyTexts(properties.Get(), item, m_textSource, m_texts, &orientation);
    m_orientation = orientation;
    return hr;
}

void CImagePropertyModel::ShowImageProperties() {
    m_rows.clear();
    const int rotateFlip = KxRotateFlipForOrientation(m_orientation);
    LONG width = 0, height = 0;
    bool made = false;
    if (m_previewPath && m_previewPath[0]) {
        made = m_controls.LoadPreviewFromFile(m_previewPath, rotateFlip, &width, &height);
    } else if (m_hPreviewSource) {
        made = m_controls.LoadPreviewFromBitmap(m_hPreviewSource, rotateFlip, &width, &height);
    }
    if (made) {
        m_texts.field[KxImageFieldWidth] = KxFormatPixelsText(width, m_textSource);
        m_texts.field[KxImageFieldHeight] = KxFormatPixelsText(height, m_textSource);
    }
    KxBuildImageRows(m_texts, m_textSource, m_rows);
    m_controls.SetRowCount(static_cast<int>(m_rows.size()));
    m_walk.SetButtons(m_dialog);
}

void CImagePropertyModel::MoveToItem(bool previous) {
    if (!m_walk.Step(previous, true, m_dialog)) return;
    if (SUCCEEDED(ReadImageProperties(m_walk.m_currentItem))) {
        ShowImageProperties();
    } else {
        m_rows.clear();  // the list goes empty; the preview stays
        m_controls.SetRowCount(0);
    }
}

void CImagePropertyModel::Release() {
    FreePreviewSource();
    m_rows.clear();
    m_walk.Release();
}
