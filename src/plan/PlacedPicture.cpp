#include "plan/PlacedPicture.h"

#include "app/PictureFile.h"
#include "app/Settings.h"
#include "look/PictureReader.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr double leastSize = 1;  // what a missing key gives, and no size at all
constexpr double farthest = 1e6; // a place beyond it is a slip of the keyboard
constexpr QSizeF preferred{640, 640};
constexpr QSizeF least{160, 160};

QImage readPicture(const QString &file, QSize size)
{
    PictureReader reader(file);
    if (!size.isEmpty())
        reader.setScaledSize(size);
    return reader.read();
}

} // namespace

PlacedPicture::PlacedPicture(QWidget *parent) : QWidget(parent)
{
    m_sharpener.setSingleShot(true);
    m_sharpener.setInterval(100ms);
    connect(&m_sharpener, &QTimer::timeout, this, [this] {
        drawSharply();
        update();
    });
}

void PlacedPicture::loadPicture(const QString &section)
{
    const PicturePlacement placement = readPicturePlacement(section);
    const auto sane = [](double value) { return std::clamp(value, 0.0, farthest); };
    m_place = QRectF(sane(placement.left), sane(placement.top), sane(placement.width), sane(placement.height));
    m_image = placement.image;
    const PictureReader reader(pictureFile(m_image, 1));
    m_pictureSize = reader.canRead() ? QSizeF(reader.size()) : QSizeF();
    if (m_pictureSize.isEmpty())
        m_image.clear();
    if (m_place.width() <= leastSize || m_place.height() <= leastSize)
        m_place = QRectF(QPointF(), m_pictureSize);
    m_picture = {};
    startReading();
    updateGeometry();
    update();
}

void PlacedPicture::startReading()
{
    m_coming = {};
    if (!m_image.isEmpty() && isVisible())
        m_coming = std::async(std::launch::async, readPicture, pictureFile(m_image, devicePixelRatioF()), QSize());
}

void PlacedPicture::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void PlacedPicture::setFallbackSize(QSizeF size)
{
    if (!m_pictureSize.isEmpty())
        return;
    m_pictureSize = size;
    if (m_place.isEmpty())
        m_place = QRectF(QPointF(), size);
}

QSizeF PlacedPicture::canvasSize() const
{
    return {m_place.right(), m_place.bottom()};
}

double PlacedPicture::canvasScale() const
{
    const QSizeF canvas = canvasSize();
    return canvas.isEmpty() ? 1.0 : std::min(width() / canvas.width(), height() / canvas.height());
}

QRectF PlacedPicture::pictureRect() const
{
    const double scale = canvasScale();
    const QSize canvas = (canvasSize() * scale).toSize();
    const QPoint corner = QStyle::alignedRect(layoutDirection(), m_alignment, canvas, rect()).topLeft();
    return {corner + m_place.topLeft() * scale, m_place.size() * scale};
}

int PlacedPicture::heightForWidth(int width) const
{
    const QSizeF canvas = canvasSize();
    return canvas.isEmpty() ? minimumSizeHint().height() : qRound(width * canvas.height() / canvas.width());
}

QSize PlacedPicture::sizeHint() const
{
    const QSizeF canvas = canvasSize();
    return canvas.isEmpty() ? minimumSizeHint()
                            : canvas.scaled(canvas.boundedTo(preferred), Qt::KeepAspectRatio).toSize();
}

QSize PlacedPicture::minimumSizeHint() const
{
    return canvasSize().scaled(least, Qt::KeepAspectRatio).toSize();
}

void PlacedPicture::drawSharply()
{
    const double ratio = devicePixelRatioF();
    const QSize size = (pictureRect().size() * ratio).toSize();
    if (m_image.isEmpty() || size.isEmpty() || size == m_picture.size())
        return;
    QImage image;
    if (m_coming.valid()) {
        image = m_coming.get();
        if (!image.isNull())
            image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    } else {
        image = readPicture(pictureFile(m_image, ratio), size);
    }
    m_picture = QPixmap::fromImage(std::move(image));
    m_picture.setDevicePixelRatio(ratio);
    if (m_picture.isNull())
        m_image.clear();
}

// While the widget changes its size the picture at hand is stretched; reading the file for every step would stutter.
void PlacedPicture::paintEvent(QPaintEvent *)
{
    const QRectF place = pictureRect();
    if (m_picture.isNull())
        drawSharply();
    else if (m_picture.size() != (place.size() * devicePixelRatioF()).toSize())
        m_sharpener.start();
    if (m_picture.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(place, m_picture, QRectF(m_picture.rect()));
}
