#include "pictures/scene.h"

#include "pictures/random.h"
#include "pictures/shapes.h"

#include <algorithm>
#include <cmath>

namespace tavro::assistantservice {

namespace {

constexpr double bottom = Scene::height + 10;

class Composer {
public:
    Composer(const Subject &subject, double width)
        : m_random(subject.seed ^ 0xC0FFEEU)
    {
        m_scene.subject = subject;
        m_scene.palette = paletteFor(subject);
        m_scene.width = width;
        m_scene.horizon = m_random.between(560, 660);
        const bool low = subject.daytime == Daytime::Sunset || subject.daytime == Daytime::Dawn;
        const bool hidden = has(Motif::City) || has(Motif::Mountains);
        m_scene.light = QPointF(width * m_random.between(0.2, 0.8),
                                low ? m_scene.horizon - m_random.between(60, 130) - (hidden ? 270 : 0)
                                    : m_random.between(130, 260));
        m_scene.lightRadius = low ? 78 : 54;
    }

    Scene run()
    {
        addSky();
        if (has(Motif::Mountains)) {
            addMountains();
        } else if (!has(Motif::City)) {
            addFarHills();
        }
        if (has(Motif::City)) {
            addCity();
        }
        if (hasWater()) {
            addWater();
        } else {
            addGround();
        }
        if (has(Motif::Forest)) {
            addForest();
        }
        return m_scene;
    }

private:
    bool has(Motif motif) const { return m_scene.subject.motifs.testFlag(motif); }
    bool isNight() const { return m_scene.subject.daytime == Daytime::Night; }
    bool hasWater() const { return has(Motif::Sea) || has(Motif::Harbour); }
    double width() const { return m_scene.width; }
    // Nothing that stands behind the water reaches below its far edge.
    double foot() const { return hasWater() ? m_scene.horizon + 12 : bottom; }

    void add(Role role, double depth, const QPainterPath &path, const QColor &colour)
    {
        m_scene.shapes.append({role, depth, path, colour});
    }

    void addSky()
    {
        if (isNight()) {
            QPainterPath stars;
            for (int i = 0; i < 130; ++i) {
                const QPointF centre(m_random.between(0, width()), m_random.between(0, m_scene.horizon - 60));
                stars.addPath(star(centre, m_random.between(0.7, 2.4)));
            }
            add(Role::Star, 0.0, stars, withAlpha(m_scene.palette.light, 0.85));
        }
        QPainterPath light;
        light.addEllipse(m_scene.light, m_scene.lightRadius, m_scene.lightRadius);
        add(Role::Light, 0.02, light, m_scene.palette.light);
        const int clouds = isNight() ? 2 : 3 + m_random.below(3) + (has(Motif::Rain) ? 4 : 0);
        for (int i = 0; i < clouds; ++i) {
            const QPointF centre(m_random.between(0, width()), m_random.between(70, m_scene.horizon * 0.6));
            const QColor colour = mixed(m_scene.palette.skyBottom, Qt::white, isNight() ? 0.05 : 0.55);
            add(Role::Cloud, 0.05, cloud(m_random, centre, m_random.between(160, 380)),
                withAlpha(colour, isNight() ? 0.35 : 0.85));
        }
        if (!isNight()) {
            QPainterPath birds;
            const QPointF flock(m_random.between(0.15, 0.85) * width(), m_random.between(180, 330));
            for (int i = 0; i < 5; ++i) {
                birds.addPath(bird(flock + QPointF(m_random.between(-110, 110), m_random.between(-50, 50)),
                                   m_random.between(9, 18)));
            }
            add(Role::Bird, 0.1, birds, m_scene.palette.near);
        }
    }

    // Far things take on the colour of the air.
    QColor aerial(double depth) const
    {
        return mixed(mixed(m_scene.palette.far, m_scene.palette.skyBottom, 0.45 * (1 - depth)), m_scene.palette.near,
                     depth * depth);
    }

    void addMountains()
    {
        for (int i = 0; i < 3; ++i) {
            const double depth = 0.15 + 0.17 * i;
            const double top = m_scene.horizon - 370 + 95 * i;
            add(Role::Far, depth, ridge(m_random, width(), top, 330 - 50 * i, 0.52, foot()), aerial(depth));
        }
    }

    void addFarHills()
    {
        for (int i = 0; i < 2; ++i) {
            const double depth = 0.2 + 0.2 * i;
            add(Role::Far, depth, rollingHill(m_random, width(), m_scene.horizon - 130 + 60 * i, 110, foot()),
                aerial(depth));
        }
    }

    void addCity()
    {
        for (int i = 0; i < 2; ++i) {
            const double depth = 0.35 + 0.25 * i;
            const QPainterPath buildings =
                skyline(m_random, width(), m_scene.horizon + 6 * i, 400 - 130 * i, m_scene.horizon + 14);
            add(Role::City, depth, buildings, mixed(aerial(depth), m_scene.palette.near, 0.35));
            const bool lit = isNight() || m_scene.subject.daytime == Daytime::Sunset;
            const QColor glass = lit ? m_scene.palette.accent : mixed(aerial(depth), Qt::white, 0.35);
            add(Role::Window, depth, windows(m_random, buildings, lit ? 0.34 : 0.42),
                lit ? hsl(44, 0.95, 0.68) : glass);
        }
    }

    void addWater()
    {
        QPainterPath water;
        water.addRect(-10, m_scene.horizon, width() + 20, bottom - m_scene.horizon);
        add(Role::Water, 0.6, water, m_scene.palette.water);
        const int boats = has(Motif::Harbour) ? 5 + m_random.below(3) : m_random.below(3);
        for (int i = 0; i < boats; ++i) {
            const double nearness = (i + m_random.between(0.2, 0.9)) / std::max(1, boats);
            const QPointF at(m_random.between(0.06, 0.94) * width(), m_scene.horizon + 26 + 250 * nearness);
            const QColor colour = mixed(m_scene.palette.accent, m_scene.palette.near, m_random.between(0.1, 0.75));
            add(Role::Boat, 0.62 + 0.3 * nearness, boat(at, 44 + 78 * nearness), colour);
        }
        const bool shore = !has(Motif::Harbour) || m_random.chance(0.5);
        if (shore) {
            add(Role::Ground, 0.95, rollingHill(m_random, width(), 900, 120, bottom),
                mixed(m_scene.palette.ground, m_scene.palette.near, 0.55));
        }
    }

    void addGround()
    {
        for (int i = 0; i < 3; ++i) {
            const double depth = 0.62 + 0.16 * i;
            const QColor colour = mixed(m_scene.palette.ground, m_scene.palette.near, 0.12 + 0.28 * i);
            add(Role::Ground, depth, rollingHill(m_random, width(), m_scene.horizon - 10 + 115 * i, 110, bottom),
                colour);
        }
        if (has(Motif::Meadow)) {
            addFlowers();
        }
        if (has(Motif::Meadow) && !has(Motif::Forest)) {
            addTreeRow(0.8, m_scene.horizon + 150, 5, 130);
        }
    }

    void addFlowers()
    {
        for (int kind = 0; kind < 2; ++kind) {
            QPainterPath flowers;
            for (int i = 0; i < 150; ++i) {
                const double y = m_random.between(m_scene.horizon + 190, 995);
                const double size = 2 + 7 * (y - m_scene.horizon) / 400;
                flowers.addEllipse(QPointF(m_random.between(0, width()), y), size, size * 0.7);
            }
            add(Role::Tree, 0.97, flowers,
                kind == 0 ? m_scene.palette.accent : mixed(m_scene.palette.light, m_scene.palette.accent, 0.2));
        }
    }

    void addTreeRow(double depth, double baseline, int count, double size)
    {
        const bool conifers = has(Motif::Mountains) || has(Motif::Snow);
        QPainterPath trees;
        trees.setFillRule(Qt::WindingFill);
        for (int i = 0; i < count; ++i) {
            const QPointF foot(m_random.between(0, width()), baseline + m_random.between(-14, 14));
            const double height = size * m_random.between(0.65, 1.15);
            trees.addPath(conifers ? conifer(foot, height) : roundTree(m_random, foot, height));
        }
        const QColor green = mixed(m_scene.palette.near, aerial(0.4), 1.1 - depth);
        add(Role::Tree, depth, trees, has(Motif::Snow) ? mixed(green, Qt::white, isNight() ? 0.12 : 0.25) : green);
    }

    void addForest()
    {
        const bool water = hasWater();
        const double start = water ? 950 : m_scene.horizon + 40;
        addTreeRow(0.7, start, static_cast<int>(width() / 34), 120.0);
        addTreeRow(0.85, start + (water ? 30 : 130), static_cast<int>(width() / 60), 220.0);
        addTreeRow(1.0, 1040.0, static_cast<int>(width() / 130), 380.0);
    }

    Random m_random;
    Scene m_scene;
};

} // namespace

Scene composeScene(const Subject &subject, double width)
{
    return Composer(subject, width).run();
}

} // namespace tavro::assistantservice
