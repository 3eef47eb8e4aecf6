#pragma once

#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <future>

/// A picture of the main window, read from the program's folder and placed as the settings say. The settings' places
/// are meant on a canvas that reaches from 0, 0 to the picture's far corner; the canvas is scaled to the widget and
/// keeps its proportions. A picture that is not there leaves the widget's paper.
class PlacedPicture : public QWidget
{
    Q_OBJECT

public:
    explicit PlacedPicture(QWidget *parent = nullptr);

    /// Reads the section ("Layout", "TopHeader", "WaitingList"). Throws SettingError.
    void loadPicture(const QString &section);

    /// Where the canvas goes in a widget of other proportions; centred at first.
    void setAlignment(Qt::Alignment alignment);

    /// The picture's place in the widget.
    [[nodiscard]] QRectF pictureRect() const;

    /// Asked only where the size policy says so.
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    [[nodiscard]] bool hasPicture() const { return !m_image.isEmpty(); }
    /// The picture's own size, in its own coordinates.
    [[nodiscard]] QSizeF pictureSize() const { return m_pictureSize; }
    /// For a picture that is not there: the size that its coordinates are meant for.
    void setFallbackSize(QSizeF size);
    /// Widget pixels per unit of the settings.
    [[nodiscard]] double canvasScale() const;

    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QSizeF canvasSize() const;
    /// Has the file read while the window still waits for the database.
    void startReading();
    void drawSharply();

    QString m_image; // file name; empty when there is none to read
    QSizeF m_pictureSize;
    QRectF m_place; // on the canvas
    Qt::Alignment m_alignment = Qt::AlignCenter;
    QPixmap m_picture;            // in the size in which it is shown; the file is read again for another size
    std::future<QImage> m_coming; // in its own size
    QTimer m_sharpener;
};
