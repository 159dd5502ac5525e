// Small helpers for making elements.

export const byId = (id) => document.getElementById(id);

/// An element with attributes and children. `on...` attributes are listeners; false and null leave
/// an attribute out.
export function make(tag, attributes = {}, ...children) {
    const element = document.createElement(tag);
    apply(element, attributes);
    element.append(...children);
    return element;
}

/// The same in SVG.
export function makeSvg(tag, attributes = {}, ...children) {
    const element = document.createElementNS("http://www.w3.org/2000/svg", tag);
    apply(element, attributes);
    element.append(...children);
    return element;
}

function apply(element, attributes) {
    for (const [name, value] of Object.entries(attributes)) {
        if (name.startsWith("on")) {
            element.addEventListener(name.slice(2), value);
        } else if (value !== false && value !== null && value !== undefined) {
            element.setAttribute(name, value === true ? "" : value);
        }
    }
}

export const clamp = (value, least, most) => Math.min(Math.max(value, least), most);

/// A number with at most so many decimals, and no more than it needs.
export const shortNumber = (value, decimals) => String(Number(value.toFixed(decimals)));

let hideTimer = 0;

/// Tells something at the lower edge for a while, and to screen readers.
export function tell(text, isProblem = false) {
    const line = byId("message");
    line.textContent = text;
    line.classList.toggle("problem", isProblem);
    line.classList.add("shown");
    clearTimeout(hideTimer);
    hideTimer = setTimeout(() => line.classList.remove("shown"), isProblem ? 8000 : 3000);
}
